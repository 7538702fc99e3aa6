#pragma once

namespace appledger {

/// Adds `nr_getAllocatedSize:ofDirectoryAtURL:error:` to NSFileManager: what all regular files in a directory take on
/// the disk, in bytes. Hidden ones count, and those in folders of any depth; a file counts once for each of its names,
/// and nothing else counts, links and what they lead to least of all. True when the size was written through the first
/// argument; else it isn't touched, and the error says what couldn't be read. Any thread.
void addAllocatedSize();

} // namespace appledger
