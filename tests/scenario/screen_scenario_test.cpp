#include "scenario/command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using scenario::Phone;

TEST(ScreenScenario, TheScreenIsWrittenAsAPictureAndAsText)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::string file = phone.root() + "/screen.png";
    EXPECT_EQ(phone.run({ "phone", "screenshot", file, "--scale", "1" }).status, 0);
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes { std::istreambuf_iterator<char>(stream), {} };
    EXPECT_TRUE(bytes.starts_with("\x89PNG"));
    // The size stands behind the header's name: 390 by 844.
    EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\x01\x86\0\0\x03\x4C", 8));

    EXPECT_NE(phone.run({ "phone", "describe" }).output.find("\"Scribbles\""), std::string::npos);
    EXPECT_EQ(phone.run({ "phone", "folder", "open", "Utilities" }).status, 0);
    EXPECT_NE(phone.run({ "phone", "describe" }).output.find("SBFolderView"), std::string::npos);

    const auto refused = phone.run({ "phone", "screenshot", phone.root() + "/nowhere/screen.png" });
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("can't write"), std::string::npos);
    EXPECT_EQ(phone.run({ "phone", "folder", "open", "Nonsense" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "screenshot", file, "--scale", "0" }).status, 2);
    phone.answer({ "phone", "down" });
    EXPECT_EQ(phone.run({ "phone", "describe" }).status, 1);
}

} // namespace
