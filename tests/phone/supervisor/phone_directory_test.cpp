#include "phone/supervisor/phone_directory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace phone {

namespace {

namespace fs = std::filesystem;

class Folder {
public:
    Folder()
    {
        std::string pattern = fs::temp_directory_path() / "phone-XXXXXX";
        path_ = ::mkdtemp(pattern.data());
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    fs::path path() const { return path_; }

private:
    fs::path path_;
};

unsigned modeOf(const fs::path& path)
{
    struct stat status { };
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

TEST(PhoneDirectory, IsMadeForItsOwnerAlone)
{
    ::umask(0);
    const Folder folder;
    const PhoneDirectory phone(folder.path() / "above/phone");
    EXPECT_NE(phone.problem(), "");
    EXPECT_EQ(phone.makeRunDirectory(), "");
    EXPECT_EQ(phone.problem(), "");
    EXPECT_EQ(modeOf(phone.root()), 0700U);
    EXPECT_EQ(modeOf(phone.runDirectory()), 0700U);
    for (const char* const name : { "lock", "log" }) {
        std::ofstream(fs::path(phone.runDirectory()) / name) << "of a former phone";
        EXPECT_EQ(modeOf(fs::path(phone.runDirectory()) / name), 0666U);
        const int descriptor = phone.openRunFile(name, O_RDWR | O_CREAT);
        EXPECT_GE(descriptor, 0);
        ::close(descriptor);
        EXPECT_EQ(modeOf(fs::path(phone.runDirectory()) / name), 0600U);
    }
    ::chmod(phone.runDirectory().c_str(), 0755);
    EXPECT_EQ(phone.makeRunDirectory(), "");
    EXPECT_EQ(modeOf(phone.runDirectory()), 0700U);
}

TEST(PhoneDirectory, ThatOthersOwnOrWriteIsUsedForNothing)
{
    const Folder folder;
    const PhoneDirectory phone(folder.path() / "phone");
    ASSERT_EQ(phone.makeRunDirectory(), "");
    const auto isRefused = [&] {
        return !phone.problem().empty() && !phone.make().empty() && !phone.makeRunDirectory().empty()
            && phone.openLockFile(O_RDWR | O_CREAT) < 0 && phone.supervisorProcess() == 0;
    };
    for (const mode_t mode : { 0720, 0702 }) {
        ::chmod(phone.root().c_str(), mode);
        EXPECT_TRUE(isRefused()) << std::oct << mode;
    }
    ::chmod(phone.root().c_str(), 0755);
    EXPECT_FALSE(isRefused());
    if (::geteuid() == 0) {
        constexpr uid_t somebody = 65534;
        ASSERT_EQ(::chown(phone.root().c_str(), somebody, static_cast<gid_t>(-1)), 0);
        EXPECT_TRUE(isRefused());
    }
    EXPECT_NE(PhoneDirectory("").makeRunDirectory(), "");
    std::ofstream(folder.path() / "file") << "";
    EXPECT_NE(PhoneDirectory(folder.path() / "file").make(), "");
}

TEST(PhoneDirectory, NoLinkLeadsOutOfIt)
{
    const Folder folder;
    const PhoneDirectory phone(folder.path() / "phone");
    ASSERT_EQ(phone.make(), "");
    fs::create_directory(folder.path() / "elsewhere");
    fs::create_symlink(folder.path() / "elsewhere", phone.runDirectory());
    EXPECT_NE(phone.makeRunDirectory(), "");
    EXPECT_LT(phone.openLogFile(O_WRONLY | O_CREAT), 0);
    std::ofstream(folder.path() / "elsewhere/bus") << "precious";
    phone.removeSocket();
    EXPECT_TRUE(fs::exists(folder.path() / "elsewhere/bus"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "elsewhere"), {}), 1);

    fs::remove(phone.runDirectory());
    ASSERT_EQ(phone.makeRunDirectory(), "");
    fs::create_symlink(folder.path() / "elsewhere/bus", phone.logFile());
    EXPECT_LT(phone.openLogFile(O_WRONLY | O_CREAT | O_TRUNC), 0);
    EXPECT_EQ(fs::file_size(folder.path() / "elsewhere/bus"), 8U);
    ASSERT_EQ(::mkfifo(phone.lockFile().c_str(), 0600), 0);
    EXPECT_LT(phone.openLockFile(O_RDWR | O_CREAT), 0);
    EXPECT_EQ(phone.supervisorProcess(), 0);
}

} // namespace
} // namespace phone
