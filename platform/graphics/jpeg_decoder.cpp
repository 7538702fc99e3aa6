#include "platform/graphics/picture_formats.h"
#include "platform/graphics/pixel_rows.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <jerror.h> // NOLINT(llvm-include-order): it needs the other
#include <jpeglib.h>

namespace platform {

namespace {

/// What the library calls back, and where it goes when it gives up: to the last setjmp, over functions without
/// destructors.
struct JpegErrors {
    jpeg_error_mgr base {};
    std::jmp_buf giveUp {};
};

[[noreturn]] void giveUp(j_common_ptr info)
{
    std::longjmp(reinterpret_cast<JpegErrors*>(info->err)->giveUp, 1);
}

/// What cameras and editors are known to write, and doesn't touch the pixels.
bool isHarmless(int warning)
{
    return warning == JWRN_EXTRANEOUS_DATA || warning == JWRN_JFIF_MAJOR || warning == JWRN_ADOBE_XFORM
        || warning == JWRN_NOT_SEQUENTIAL;
}

void hearMessage(j_common_ptr info, int level)
{
    if (level < 0 && !isHarmless(info->err->msg_code))
        giveUp(info);
}

/// A file with thousands of scans would take minutes.
void countScans(j_common_ptr info)
{
    constexpr int mostScans = 500;
    if (info->is_decompressor && reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > mostScans)
        giveUp(info);
}

/// Four inks to three colours, in place. Most files with the mark of the editor that began it store the inks inverted.
void convertFromInks(std::uint32_t* pixels, std::size_t count, bool areInverted)
{
    const std::uint8_t flip = areInverted ? 0 : 0xFF;
    for (std::size_t index = 0; index < count; ++index) {
        std::uint8_t inks[4];
        std::memcpy(inks, &pixels[index], sizeof inks);
        const std::uint32_t paper = inks[3] ^ flip;
        const auto light = [paper, flip](std::uint8_t ink) { return ((ink ^ flip) * paper + 127) / 255; };
        pixels[index] = 0xFF000000U | light(inks[0]) << 16 | light(inks[1]) << 8 | light(inks[2]);
    }
}

class JpegReader {
public:
    explicit JpegReader(std::string_view bytes)
        : bytes_(bytes)
    {
        info_.err = jpeg_std_error(&errors_.base);
        errors_.base.error_exit = giveUp;
        errors_.base.emit_message = hearMessage;
        progress_.progress_monitor = countScans;
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader() { jpeg_destroy_decompress(&info_); }

    bool readHeader()
    {
        if (setjmp(errors_.giveUp) != 0)
            return false;
        jpeg_create_decompress(&info_);
        info_.progress = &progress_;
        jpeg_mem_src(&info_, reinterpret_cast<const unsigned char*>(bytes_.data()), bytes_.size());
        jpeg_save_markers(&info_, metadataMarker, 0xFFFF);
        jpeg_read_header(&info_, TRUE);
        hasInks_ = info_.num_components == 4;
        info_.out_color_space = hasInks_ ? JCS_CMYK : JCS_EXT_BGRA;
        return true;
    }

    std::uint32_t width() const { return info_.image_width; }
    std::uint32_t height() const { return info_.image_height; }

    /// Ends what the header's functions may be asked.
    bool read(Bitmap& bitmap)
    {
        if (setjmp(errors_.giveUp) != 0)
            return false;
        jpeg_start_decompress(&info_);
        while (info_.output_scanline < info_.output_height) {
            auto* const row = bitmap.pixels.data() + std::size_t { info_.output_scanline } * info_.output_width;
            JSAMPROW samples = reinterpret_cast<JSAMPROW>(row);
            jpeg_read_scanlines(&info_, &samples, 1);
            if (hasInks_)
                convertFromInks(row, info_.output_width, info_.saw_Adobe_marker);
        }
        jpeg_finish_decompress(&info_);
        return true;
    }

    Orientation orientation() const
    {
        constexpr std::string_view name("Exif\0\0", 6);
        for (const jpeg_marker_struct* marker = info_.marker_list; marker; marker = marker->next) {
            const std::string_view content(reinterpret_cast<const char*>(marker->data), marker->data_length);
            if (content.starts_with(name))
                return orientationFrom(content.substr(name.size()));
        }
        return Orientation::Upright;
    }

private:
    static constexpr int metadataMarker = JPEG_APP0 + 1;

    std::string_view bytes_;
    jpeg_decompress_struct info_ {};
    JpegErrors errors_;
    jpeg_progress_mgr progress_ {};
    bool hasInks_ = false;
};

} // namespace

std::optional<Bitmap> decodeJpeg(std::string_view bytes)
{
    JpegReader reader(bytes);
    if (!reader.readHeader())
        return std::nullopt;
    const auto width = reader.width();
    const auto height = reader.height();
    std::optional<Bitmap> bitmap = canHold(bytes.size(), width, height) ? Bitmap::make(width, height) : std::nullopt;
    const Orientation orientation = reader.orientation();
    if (!bitmap || !reader.read(*bitmap))
        return std::nullopt;
    return uprightFrom(std::move(*bitmap), orientation);
}

} // namespace platform
