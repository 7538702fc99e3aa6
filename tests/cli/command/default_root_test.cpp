#include "cli/command/default_root.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace cli {

namespace {

void set(const char* variable, const char* value)
{
    if (value)
        ::setenv(variable, value, 1);
    else
        ::unsetenv(variable);
}

TEST(DefaultRoot, LiesWithItsUserAlone)
{
    const passwd* const account = ::getpwuid(::geteuid());
    const std::string home = account ? account->pw_dir : "";
    const std::string ofAccount = home.starts_with('/') ? home + "/.local/share/appledger/phone" : "";
    const struct {
        const char* data;
        const char* home;
        std::string root;
    } cases[] {
        { "/data", "/home/a", "/data/appledger/phone" },
        { nullptr, "/home/a", "/home/a/.local/share/appledger/phone" },
        { "", "/home/a", "/home/a/.local/share/appledger/phone" },
        { "relative", "/home/a", "/home/a/.local/share/appledger/phone" },
        { nullptr, nullptr, ofAccount },
        { nullptr, "", ofAccount },
        { nullptr, "relative", ofAccount },
    };
    for (const auto& [data, ofUser, root] : cases) {
        set("XDG_DATA_HOME", data);
        set("HOME", ofUser);
        EXPECT_EQ(defaultRoot(), root);
    }
}

} // namespace
} // namespace cli
