#include "platform/graphics/picture_formats.h"
#include "platform/graphics/png_chunks.h"

namespace platform {

std::optional<Bitmap> decodePicture(std::string_view bytes)
{
    if (bytes.starts_with(png::signature))
        return decodePng(bytes);
    if (bytes.starts_with("\xFF\xD8"))
        return decodeJpeg(bytes);
    return std::nullopt;
}

} // namespace platform
