#include "cli/phone/bundle_copy.h"

#include "platform/foundation/files.h"

#include <cstring>
#include <filesystem>

namespace cli {

namespace fs = std::filesystem;

namespace {

constexpr int deepest = 64; ///< folders in each other
constexpr std::size_t mostFiles = 100'000;
constexpr std::size_t largestFile = std::size_t { 1 } << 30;

class BundleCopy {
public:
    explicit BundleCopy(const fs::path& folder)
        : root_(fs::canonical(folder, error_))
    {
    }

    /// "" or a problem.
    std::string copyTo(const std::string& to) { return error_ ? error_.message() : copyFolder(root_, to, 0); }

private:
    std::string problemAt(const fs::path& path, const std::string& problem) const
    {
        return path.lexically_relative(root_).string() + " " + problem;
    }

    std::string copyFolder(const fs::path& from, const std::string& to, int depth)
    {
        if (depth > deepest)
            return problemAt(from, "is a folder that lies too deep");
        if (const int error = platform::createDirectories(to))
            return to + " can't be made on the phone: " + std::strerror(error);
        for (fs::directory_iterator entry(from, error_), end; !error_ && entry != end; entry.increment(error_))
            if (std::string problem = copyEntry(entry->path(), to, depth); !problem.empty())
                return problem;
        return error_ ? problemAt(from, "can't be read: " + error_.message()) : "";
    }

    std::string copyEntry(const fs::path& path, const std::string& to, int depth)
    {
        const std::string copy = platform::pathByAppending(to, path.filename().string());
        const fs::file_status status = fs::symlink_status(path, error_);
        switch (status.type()) {
        case fs::file_type::directory:
            return copyFolder(path, copy, depth + 1);
        case fs::file_type::regular:
            return copyFile(path, copy);
        case fs::file_type::symlink:
            return copyLink(path, copy);
        default:
            return problemAt(path, "is neither a file nor a folder");
        }
    }

    std::string copyLink(const fs::path& path, const std::string& copy)
    {
        const fs::path target = fs::canonical(path, error_);
        if (error_)
            return problemAt(path, "is a link that leads nowhere");
        if (const fs::path inside = target.lexically_relative(root_); inside.empty() || *inside.begin() == "..")
            return problemAt(path, "is a link that leads out of it");
        if (!fs::is_regular_file(target, error_))
            return problemAt(path, "is a link to something that isn't a file");
        return copyFile(target, copy);
    }

    std::string copyFile(const fs::path& path, const std::string& copy)
    {
        if (++files_ > mostFiles)
            return "it has more than " + std::to_string(mostFiles) + " files";
        const platform::FileReading reading = platform::tryToReadHostFile(path.string(), largestFile);
        if (!reading.content)
            return problemAt(path, "can't be read: " + reading.problem);
        const auto rights = fs::status(path, error_).permissions();
        const bool mayRun = (rights & fs::perms::owner_exec) != fs::perms::none;
        if (const int error = platform::writeFileAtomically(copy, *reading.content, mayRun ? 0755 : 0644))
            return copy + " can't be written on the phone: " + std::strerror(error);
        return "";
    }

    std::error_code error_;
    const fs::path root_;
    std::size_t files_ = 0;
};

} // namespace

std::string copyBundle(const std::string& folder, const std::string& stagedContainer)
{
    std::error_code error;
    fs::path path = fs::absolute(folder, error).lexically_normal();
    if (!path.has_filename())
        path = path.parent_path();
    std::string name = path.filename().string();
    if (!name.ends_with(".app"))
        name += ".app";
    // Before anything is read of a folder that was never meant.
    if (!fs::is_regular_file(path / "Info.plist", error))
        return "it has no Info.plist";
    return BundleCopy(path).copyTo(platform::pathByAppending(stagedContainer, name));
}

} // namespace cli
