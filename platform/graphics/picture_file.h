#pragma once

#include "platform/foundation/file_reader.h"
#include "platform/graphics/bitmap.h"

#include <memory>

namespace platform {

/// A PNG file of the device that brings a small copy of its picture along, kept open: who shows it small reads the copy
/// alone. A file that takes its place later changes nothing here. Any thread.
class PictureFile {
public:
    /// Null for every other file, for one whose chunks don't end where it does, and when many are open already.
    static std::shared_ptr<const PictureFile> open(std::string_view path);

    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;
    ~PictureFile();

    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    const Bitmap& smallCopy() const noexcept { return smallCopy_; }

    /// Reads it. Empty when its pixels are damaged, or another program has written into it meanwhile.
    std::optional<Bitmap> whole() const;

private:
    explicit PictureFile(FileReader file);
    bool readSmallCopy();
    bool readEnds();

    FileReader file_;
    int width_ = 0;
    int height_ = 0;
    std::uint64_t size_ = 0;
    Bitmap smallCopy_ {};
};

} // namespace platform
