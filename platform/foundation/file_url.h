#pragma once

#include "platform/foundation/descriptor.h"
#include "platform/foundation/directory_tree.h"
#include "platform/runtime/object.h"

#include <memory>
#include <optional>
#include <string>

/// Where file URLs lead, for the files of this folder alone.

namespace platform::detail {

struct FilePlace {
    std::string anchor; ///< device path, in which links are followed
    std::string below; ///< what was appended to it, in which none is; "" for nothing
};

/// A directory that somebody walks, held open, so that its entries are found in it wherever it is moved.
struct WalkedDirectory {
    Descriptor descriptor;
    FilePlace place;
};

/// What a walk came upon.
struct WalkedEntry {
    std::shared_ptr<const WalkedDirectory> directory;
    std::string name;
    EntryKind kind = EntryKind::Unknown;
};

/// The file URL of an entry.
id urlOfEntry(WalkedEntry entry);

/// Null unless the URL came from a walk.
const WalkedEntry* walkedEntry(const id& url);

/// Empty unless it is a file URL.
std::optional<FilePlace> filePlace(const id& url);

} // namespace platform::detail
