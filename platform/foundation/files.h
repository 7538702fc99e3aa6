#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The device's files. Every path here is a device path ("/var/mobile/…"; a path without a leading slash
/// is taken from "/"), resolved beneath the directory that stands for the device's root. Neither "..",
/// nor a symbolic link (an absolute one is followed inside the root), nor a name that came from outside
/// leads out of it. A path with a NUL byte, or with a component over 255 bytes, names nothing.
///
/// All functions may be called from any thread and block on the disk. Failures are values, not exceptions.

namespace platform {

/// Makes `directory` (a path of the host) the device's root for this process. False when it can't be
/// opened as a directory. Call it before anything else of this header; until then nothing exists.
/// A later call puts another root in its place (for tests).
bool setDeviceRoot(const std::string& directory);

/// The host's path of the device's root; empty before setDeviceRoot().
std::string deviceRoot();

enum class FileKind { Missing, Regular, Directory, Other };

/// Of what the path leads to, links followed. Missing also when it can't be looked at.
FileKind fileKind(std::string_view path);
inline bool fileExists(std::string_view path)
{
    return fileKind(path) != FileKind::Missing;
}
inline bool directoryExists(std::string_view path)
{
    return fileKind(path) == FileKind::Directory;
}

/// What tells one content of a file from another without reading it.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t modifiedNanoseconds = 0;
    std::uint64_t size = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Empty when there is no regular file there.
std::optional<FileStamp> fileStamp(std::string_view path);

/// A file's content, or why there is none.
struct FileReading {
    std::optional<std::string> content;
    FileStamp stamp; ///< of the content
    int error = 0; ///< ENOENT: there is no file; EISDIR; EFBIG: larger than the limit; what the system said
    std::string problem; ///< `error` for people, behind "because": "it is a folder"; "" without an error
};

/// The whole content of a regular file of at most `limit` bytes. Never waits for a pipe's writer.
FileReading tryToReadFile(std::string_view path, std::size_t limit = std::size_t { 64 } << 20);

/// The same of a file of the host, by its own path.
FileReading tryToReadHostFile(const std::string& path, std::size_t limit = std::size_t { 64 } << 20);

/// The same for who doesn't ask why there is none.
std::optional<std::string> readFile(std::string_view path, std::size_t limit = std::size_t { 64 } << 20);

/// Replaces the content in one step: a new file beside it is written and renamed. On failure (a full
/// disk, a read-only system, a missing directory) the former content stands, nothing is left beside it,
/// and the result is the `errno` of what failed; 0 on success. The mode is for a new file; an existing
/// file keeps its own. A link there is replaced, not followed. A writer that is killed may leave a file
/// ".new-…" beside it, which the next writer in that directory removes.
[[nodiscard]] int writeFileAtomically(std::string_view path, std::string_view content, unsigned mode = 0644);

/// The same for a file of the host. What a link leads to is replaced, and the content goes straight into what isn't a
/// regular file, such as a terminal.
[[nodiscard]] int writeHostFileAtomically(const std::string& path, std::string_view content, unsigned mode = 0644);

/// Sets who may do what with the file or directory (`NSFilePosixPermissions`). 0, or an `errno`.
[[nodiscard]] int setFileMode(std::string_view path, unsigned mode);

/// Makes the directory and those above it. 0, or an `errno`; a directory that is there already is a success.
[[nodiscard]] int createDirectories(std::string_view path);

/// Removes one file, link (not what it leads to) or empty directory. 0, or an `errno`.
[[nodiscard]] int removeFile(std::string_view path);

/// Removes a file, link (not what it leads to) or directory with all that is in it. Links above it are followed beneath
/// the device's root; those in it are removed. 0 when it is gone, or was, else the `errno` of the first thing that
/// stayed.
[[nodiscard]] int removeTree(std::string_view path);

/// The names in a directory, sorted by byte, without "." and ".."; empty when it can't be read.
std::vector<std::string> directoryEntries(std::string_view path);

/// How long a FileLock is waited for.
inline constexpr std::chrono::milliseconds lockPatience { 3000 };

/// An exclusive lock among processes and threads, held while the object lives, on a file of its own that is made
/// where it is missing. A holder that dies lets it go; one that holds it for longer than is waited is an error
/// (ETIMEDOUT).
class FileLock {
public:
    explicit FileLock(std::string_view path, std::chrono::milliseconds patience = lockPatience);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// 0 when the lock is held, else the `errno` of what failed.
    int error() const noexcept { return error_; }

private:
    int descriptor_ = -1;
    int error_ = 0;
};

/// `stringByAppendingPathComponent:`: exactly one slash between the two; the component alone when the path
/// is empty.
std::string pathByAppending(std::string_view path, std::string_view component);

/// `stringByDeletingLastPathComponent`: "/a/b/c.plist" and "/a/b/c/" give "/a/b"; "/a" gives "/"; "a" gives "".
std::string pathByDeletingLastComponent(std::string_view path);

/// Gives a file or a directory with all that is in it another name on the device, in one step; a link is moved, not
/// what it leads to. 0, or an `errno`: EEXIST where something has that name already.
[[nodiscard]] int moveFile(std::string_view from, std::string_view to);

} // namespace platform
