#pragma once

#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/runtime/object.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// A property list in a file that several processes change. Whoever changes it in the light of what it holds does so
/// in one operation, under a lock among processes: it reads, changes, writes beside and renames.
///
/// What can't be understood is never lost: a damaged file, or one whose root is of another type, is moved aside
/// (".damaged-1" behind its name, or the next number that is free) before a new one takes its place, and a file that
/// can't be read, or that a write would change where nobody asked for it, isn't written at all.

namespace platform {

/// What came of a write.
struct [[nodiscard]] WriteOutcome {
    int error = 0; ///< 0 when all is as it was to be, else an `errno`, and the file is as it was
    std::string problem {}; ///< `error` for people, a sentence without its end; "" without one
    std::string setAside {}; ///< the device path that a damaged file has now; "" when there was none

    bool isDone() const noexcept { return error == 0; }
};

/// For values that no file can be asked to hold.
WriteOutcome refusedValue(std::string_view path);

enum class PropertyListRoot { Array, Dictionary };

struct PropertyListFileKind {
    PropertyListRoot root;
    PropertyListFormat format;
    unsigned newFileMode;
};

/// Gets the root that the file holds, an empty one where there is none, and gives the root that it is to hold; empty
/// to leave the file as it is.
using PropertyListChange = std::function<std::optional<id>(const id& root)>;

/// One change of the file at that device path, whose directory is made where it is missing. Any thread; waits for the
/// disk, and up to `lockPatience` for others' changes.
WriteOutcome changePropertyListFile(
    const std::string& path, const PropertyListFileKind& kind, const PropertyListChange& change);

/// The same for one who reads the file often. One thread at a time, except for the path and the lock.
class PropertyListFile {
public:
    PropertyListFile(std::string path, const PropertyListFileKind& kind);

    /// What the file holds now; nil when there is none or it can't be read. Parses it only when it has changed.
    const id& read();

    /// Why the last read() gave nil though there is something, for people; else "".
    const std::string& problem() const noexcept { return problem_; }

    /// Takes the lock that a change needs, and makes the directory. The lock is empty when that failed.
    WriteOutcome takeLock(std::optional<FileLock>& lock) const;

    /// One change, under the lock.
    WriteOutcome change(const FileLock& lock, const PropertyListChange& change);

private:
    WriteOutcome refused(int error, std::string_view why) const;
    void understand(std::string bytes);
    int setAside(std::string& newPath) const;

    const std::string path_;
    const PropertyListFileKind kind_;
    std::optional<FileStamp> stamp_;
    bool isSettled_ = false; ///< whether any later change of the file shows in its stamp
    std::string bytes_; ///< as they were read or written last: the same bytes aren't parsed twice
    id content_;
    int error_ = 0; ///< of reading: what can't be read can't be written either
    bool isDamaged_ = false;
    bool isOwn_ = false; ///< the bytes were written here, and so hold nothing that a write would change
    std::string problem_;
};

} // namespace platform
