#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace support {

/// The folder of a source, as __FILE__ names it.
inline std::filesystem::path folderOf(const std::string& sourceFile)
{
    // The compiler may have been given the source relative to the build's directory, which holds that of the
    // executable.
    const std::filesystem::path build = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    return (build / sourceFile).parent_path();
}

/// Compares a text with the file of that name in the folder `golden` beside the test's source. With
/// APPLEDGER_REWRITE_GOLDEN set in the environment it writes the file instead, to be read before it is committed.
inline void expectGolden(const std::string& text, const std::string& name, const std::string& sourceFile)
{
    const std::filesystem::path path = folderOf(sourceFile) / "golden" / name;
    if (std::getenv("APPLEDGER_REWRITE_GOLDEN")) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return;
    }
    std::ifstream file(path);
    EXPECT_TRUE(file) << "there is no " << path;
    EXPECT_EQ(text, std::string(std::istreambuf_iterator<char>(file), {})) << path;
}

} // namespace support

#define EXPECT_GOLDEN(text, name) support::expectGolden(text, name, __FILE__)
