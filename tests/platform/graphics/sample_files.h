#pragma once

#include "platform/graphics/bitmap.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Picture files of every kind, made anew for each test by the libraries that others write them with.

namespace samples {

struct PngForm {
    const char* name;
    int colors;
    int depth;
    bool interlaced = false;
    int width = 7;
    int height = 5;
    int filters = 0; ///< libpng's choice, or one of its numbers
    bool isVaried = false; ///< else all samples are of their highest value; with a palette, its colour 0, red
};

extern const std::vector<PngForm> pngForms;

std::string makePng(const PngForm& form);

struct JpegForm {
    const char* name;
    int inputColors; ///< as libjpeg numbers them
    int storedColors;
    bool hasEditorsMark = true;
    bool isProgressive = false;
    std::string metadata {}; ///< of a camera
    int width = 16;
    int height = 16;
};

/// All pixels have these samples, except in its left upper quarter, which is black.
std::string makeJpeg(const JpegForm& form, const std::vector<unsigned char>& samples);

/// The metadata of a camera with one entry, and the name before it that a JPEG has.
std::string metadata(
    bool isLittleEndian, std::uint16_t tag, std::uint16_t type, std::uint32_t count, std::uint16_t value);

/// What libpng itself makes of a file, as a Bitmap.
std::optional<platform::Bitmap> readWithLibpng(const std::string& file);

std::string bigEndian(std::uint32_t value);
/// A chunk of a PNG file, with its right sum.
std::string chunk(const std::string& name, const std::string& content);
/// Where the chunk of that name begins, with its length; the first of several.
std::size_t chunkAt(const std::string& file, const std::string& name);
/// Writes the right sum behind the first chunk of that name.
void mendSum(std::string& file, const std::string& name);

} // namespace samples
