#pragma once

#include "platform/graphics/bitmap.h"

/// The readers of the kinds of files, for decodePicture() and the files of this folder.

namespace platform {

/// How a camera was held: what a picture's first row and first column show, numbered as in its metadata.
enum class Orientation : std::uint8_t {
    Upright = 1,
    MirroredAcross,
    UpsideDown,
    MirroredDown,
    Transposed,
    TurnedLeft,
    TransposedAcross,
    TurnedRight,
};

/// From the metadata of a camera (the TIFF structure that begins with its byte order). Upright for what can't be
/// understood.
Orientation orientationFrom(std::string_view metadata);

/// The bitmap as it was seen. Quarter turns take room for a second one meanwhile.
Bitmap uprightFrom(Bitmap bitmap, Orientation orientation);

std::optional<Bitmap> decodeJpeg(std::string_view bytes);

std::optional<Bitmap> decodePng(std::string_view bytes);

/// The quick reader of the usual files: eight bits, colours with or without alpha, in one pass, with nothing that says
/// how to understand the colours, and undamaged. Empty for any other, of which decodePng() asks a library.
std::optional<Bitmap> decodePlainPng(std::string_view bytes);

/// Whether a file of that size can hold so large a picture, as far as can be told before room for it is made.
bool canHold(std::size_t fileSize, std::uint64_t width, std::uint64_t height);

} // namespace platform
