#include "platform/graphics/sample_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <png.h>

namespace samples {

namespace {

void append(png_structp png, png_bytep bytes, png_size_t size)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), size);
}

std::uint32_t checkSum(std::string_view bytes)
{
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

} // namespace

const std::vector<PngForm> pngForms {
    { "gray 1", PNG_COLOR_TYPE_GRAY, 1 },
    { "gray 2", PNG_COLOR_TYPE_GRAY, 2 },
    { "gray 4", PNG_COLOR_TYPE_GRAY, 4 },
    { "gray 8", PNG_COLOR_TYPE_GRAY, 8 },
    { "gray 16", PNG_COLOR_TYPE_GRAY, 16 },
    { "gray and alpha 8", PNG_COLOR_TYPE_GRAY_ALPHA, 8 },
    { "gray and alpha 16", PNG_COLOR_TYPE_GRAY_ALPHA, 16 },
    { "palette 1", PNG_COLOR_TYPE_PALETTE, 1 },
    { "palette 8, interlaced", PNG_COLOR_TYPE_PALETTE, 8, true },
    { "colours 8", PNG_COLOR_TYPE_RGB, 8 },
    { "colours 16", PNG_COLOR_TYPE_RGB, 16 },
    { "colours and alpha 8", PNG_COLOR_TYPE_RGBA, 8 },
    { "colours and alpha 8, interlaced", PNG_COLOR_TYPE_RGBA, 8, true },
    { "colours and alpha 16", PNG_COLOR_TYPE_RGBA, 16 },
};

std::string makePng(const PngForm& form)
{
    std::string bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop information = png_create_info_struct(png);
    png_set_write_fn(png, &bytes, append, nullptr);
    png_set_IHDR(png, information, static_cast<png_uint_32>(form.width), static_cast<png_uint_32>(form.height),
        form.depth, form.colors, form.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
        PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (form.filters != 0)
        png_set_filter(png, PNG_FILTER_TYPE_BASE, form.filters);
    const png_color red { 255, 0, 0 };
    if (form.colors == PNG_COLOR_TYPE_PALETTE)
        png_set_PLTE(png, information, &red, 1);
    png_write_info(png, information);
    std::vector<unsigned char> row(
        static_cast<std::size_t>(form.width) * 8 + 8, form.colors == PNG_COLOR_TYPE_PALETTE ? 0 : 0xFF);
    const int passes = form.interlaced ? png_set_interlace_handling(png) : 1;
    for (int pass = 0; pass < passes; ++pass)
        for (int y = 0; y < form.height; ++y) {
            if (form.isVaried)
                for (std::size_t index = 0; index < row.size(); ++index)
                    row[index] = static_cast<unsigned char>(
                        index * 37 + static_cast<std::size_t>(y) * 61 + index * index % 11);
            png_write_row(png, row.data());
        }
    png_write_end(png, information);
    png_destroy_write_struct(&png, &information);
    return bytes;
}

std::string makeJpeg(const JpegForm& form, const std::vector<unsigned char>& samples)
{
    jpeg_compress_struct info {};
    jpeg_error_mgr errors {};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = static_cast<JDIMENSION>(form.width);
    info.image_height = static_cast<JDIMENSION>(form.height);
    info.input_components = static_cast<int>(samples.size());
    info.in_color_space = static_cast<J_COLOR_SPACE>(form.inputColors);
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, static_cast<J_COLOR_SPACE>(form.storedColors));
    info.write_Adobe_marker = form.hasEditorsMark ? TRUE : FALSE;
    jpeg_set_quality(&info, 98, TRUE);
    // Each pixel has its own colour.
    info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
    if (form.isProgressive)
        jpeg_simple_progression(&info);
    jpeg_start_compress(&info, TRUE);
    if (!form.metadata.empty())
        jpeg_write_marker(&info, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(form.metadata.data()),
            static_cast<unsigned>(form.metadata.size()));
    for (int y = 0; y < form.height; ++y) {
        std::vector<unsigned char> row;
        for (int x = 0; x < form.width; ++x)
            for (const unsigned char sample : samples)
                row.push_back(x < form.width / 2 && y < form.height / 2 ? 0 : sample);
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&info, &pointer, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::string result(reinterpret_cast<char*>(bytes), size);
    std::free(bytes);
    return result;
}

std::string metadata(
    bool isLittleEndian, std::uint16_t tag, std::uint16_t type, std::uint32_t count, std::uint16_t value)
{
    std::string bytes = isLittleEndian ? "II" : "MM";
    const auto add = [&](std::uint32_t number, int size) {
        for (int index = 0; index < size; ++index)
            bytes += static_cast<char>(number >> 8 * (isLittleEndian ? index : size - 1 - index));
    };
    add(42, 2);
    add(8, 4);
    add(1, 2);
    add(tag, 2);
    add(type, 2);
    add(count, 4);
    add(value, 2);
    add(0, 2);
    add(0, 4);
    return std::string("Exif\0\0", 6) + bytes;
}

std::optional<platform::Bitmap> readWithLibpng(const std::string& file)
{
    png_image image {};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        return std::nullopt;
    image.format = PNG_FORMAT_BGRA;
    auto bitmap = platform::Bitmap::make(image.width, image.height);
    if (!bitmap || !png_image_finish_read(&image, nullptr, bitmap->pixels.data(), 0, nullptr)) {
        png_image_free(&image);
        return std::nullopt;
    }
    for (std::uint32_t& pixel : bitmap->pixels) {
        const std::uint32_t alpha = pixel >> 24;
        std::uint32_t multiplied = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            multiplied |= ((pixel >> shift & 0xFF) * alpha * 2 + 255) / 510 << shift;
        pixel = multiplied;
    }
    return bitmap;
}

std::string bigEndian(std::uint32_t value)
{
    return { static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
        static_cast<char>(value) };
}

std::string chunk(const std::string& name, const std::string& content)
{
    return bigEndian(static_cast<std::uint32_t>(content.size())) + name + content + bigEndian(checkSum(name + content));
}

std::size_t chunkAt(const std::string& file, const std::string& name)
{
    const std::size_t found = file.find(name);
    EXPECT_NE(found, std::string::npos) << name;
    return found - 4;
}

void mendSum(std::string& file, const std::string& name)
{
    const std::size_t start = chunkAt(file, name);
    std::uint32_t length = 0;
    for (std::size_t index = 0; index < 4; ++index)
        length = length << 8 | static_cast<unsigned char>(file[start + index]);
    file.replace(start + 8 + length, 4, bigEndian(checkSum(std::string_view(file).substr(start + 4, length + 4))));
}

} // namespace samples
