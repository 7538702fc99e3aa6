#pragma once

#include "platform/foundation/descriptor.h"
#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"
#include "platform/runtime/object.h"
#include "platform/runtime/selector.h"

#include <memory>
#include <optional>
#include <string>

/// Where file URLs lead, for the files of this folder alone.

namespace platform::detail {

struct FilePlace {
    std::string anchor; ///< device path, in which links are followed
    std::string below; ///< what was appended to it, in which none is; "" for nothing
};

/// Where a walk has come to, by the names that led there.
struct WalkedPath {
    FilePlace top; ///< of the directory where the walk began
    std::shared_ptr<const WalkedPath> above {}; ///< null there
    std::string name {}; ///< in the directory above

    FilePlace place() const;
};

/// A directory that somebody walks, held open, so that its entries are found in it wherever it is moved.
struct WalkedDirectory {
    Descriptor descriptor;
    std::shared_ptr<const WalkedPath> path;
};

/// What a walk came upon.
struct WalkedEntry {
    std::shared_ptr<const WalkedDirectory> directory;
    std::string name;
    EntryKind kind = EntryKind::Unknown;
};

/// Makes `url`, nil or one that this has made, the file URL of an entry: the same object where nobody else holds it.
void setUrlOfEntry(id& url, const std::shared_ptr<const WalkedDirectory>& directory, const char* name, EntryKind kind);

/// `getResourceValue:forKey:error:` of an NSURL.
bool getResourceValue(const id& url, SEL, id* value, const id& key, id* error);

/// Null unless the URL came from a walk.
const WalkedEntry* walkedEntry(const id& url);

/// Opens the directory of a place: links are followed down to the anchor, and not below it.
Opening openPlace(const FilePlace& place);

/// The directory that holds the last component of a place, and that component.
Entry openParent(const FilePlace& place);

/// Empty unless it is a file URL.
std::optional<FilePlace> filePlace(const id& url);

} // namespace platform::detail
