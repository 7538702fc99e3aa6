#pragma once

namespace appledger {

/// Registers the library's own classes, so that whoever knows their names finds them. In every process, before
/// anything else of the load.
void registerLibraryClasses();

} // namespace appledger
