#include "platform/graphics/picture_file.h"

#include "platform/graphics/picture_formats.h"
#include "platform/graphics/png_chunks.h"
#include "platform/graphics/reduction.h"

#include <atomic>

namespace platform {

namespace {

/// A process has few descriptors, and pictures that are kept are kept as pixels sooner or later.
constexpr int mostOpen = 32;
std::atomic<int> openNow { 0 };

/// As large as any file that is read.
constexpr std::uint64_t largestFile = std::uint64_t { 64 } << 20;

constexpr std::size_t headerEnd = png::signature.size() + png::chunkFrame + png::headerSize;

/// A small copy holds at most this many bytes: its pixels, and as much again.
constexpr std::size_t largestCopy = std::size_t { 8 } * smallCopySide * smallCopySide * 3;

std::string read(const FileReader& file, std::uint64_t offset, std::size_t size)
{
    std::string bytes(size, '\0');
    bytes.resize(file.read(offset, bytes.data(), size));
    return bytes;
}

} // namespace

PictureFile::PictureFile(FileReader file)
    : file_(std::move(file))
{
    ++openNow;
}

PictureFile::~PictureFile()
{
    --openNow;
}

std::shared_ptr<const PictureFile> PictureFile::open(std::string_view path)
{
    if (openNow >= mostOpen)
        return nullptr;
    std::shared_ptr<PictureFile> picture(new PictureFile(FileReader::ofDevice(path)));
    return picture->file_.error() == 0 && picture->readSmallCopy() && picture->readEnds() ? picture : nullptr;
}

bool PictureFile::readSmallCopy()
{
    const std::string start = read(file_, 0, headerEnd + 8);
    std::string_view rest = start;
    const png::Header header = png::takeHeader(rest);
    if (header.width == 0 || rest.size() != 8 || !rest.ends_with(png::smallCopyName))
        return false;
    const std::size_t length = png::numberAt(rest, 0);
    if (std::uint64_t { header.width } * header.height > mostPixels || length > largestCopy)
        return false;
    const std::string chunk = read(file_, headerEnd, length + png::chunkFrame);
    rest = chunk;
    const auto copy = png::takeChunk(rest);
    auto pixels = copy && copy->isWhole ? decodePlainPng(copy->content) : std::nullopt;
    width_ = static_cast<int>(header.width);
    height_ = static_cast<int>(header.height);
    if (!pixels || smallCopySize(width_, height_) != PixelSize { pixels->width, pixels->height })
        return false;
    smallCopy_ = std::move(*pixels);
    size_ = headerEnd + chunk.size();
    return true;
}

/// From chunk to chunk without reading what they hold.
bool PictureFile::readEnds()
{
    std::string frame;
    do {
        frame = read(file_, size_, 8);
        if (frame.size() < 8)
            return false;
        size_ += png::chunkFrame + png::numberAt(frame, 0);
    } while (!frame.ends_with("IEND") && size_ <= largestFile);
    char beyond;
    return size_ <= largestFile && file_.read(size_ - 1, &beyond, 1) == 1 && file_.read(size_, &beyond, 1) == 0;
}

std::optional<Bitmap> PictureFile::whole() const
{
    auto bitmap = decodePng(read(file_, 0, size_));
    return bitmap && bitmap->width == width_ && bitmap->height == height_ ? std::move(bitmap) : std::nullopt;
}

} // namespace platform
