#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

/// What an executable tells of its own encryption. It is only looked at: the header and the load commands are read,
/// never what they speak of, and nothing is decrypted.

namespace appledger {

/// Reads what there is of `size` bytes from `offset` on, and says how many that were.
using ReadAt = std::function<std::size_t(std::uint64_t offset, void* bytes, std::size_t size)>;

enum class ExecutableKind {
    NotMachO, ///< begins with none of the format's six words, or is too short for one
    Decrypted, ///< no part of it is marked, or it can't be followed to its end
    Encrypted,
};

/// A file that leads nowhere is given up after that much: no real one has a hundredth of it.
inline constexpr unsigned mostReads = 512;
inline constexpr std::size_t mostBytesRead = std::size_t { 1 } << 20;

/// Thin and universal files, of both widths and both byte orders. A universal file is encrypted when one of its slices
/// is; a slice that is damaged is passed over.
ExecutableKind executableKind(const ReadAt& readAt);

/// Of the device's file at that path; false also where there is none. Blocks on the disk; any thread.
bool isEncryptedExecutable(const std::string& path);

} // namespace appledger
