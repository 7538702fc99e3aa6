#include "platform/foundation/property_list_guard.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform::detail {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
constexpr std::uint64_t mostTextBytes = std::uint64_t { 4 } * largestPropertyList;

enum class Kind { Scalar, Text, Array, Dictionary };

/// An object as it lies in the file.
struct Object {
    Kind kind = Kind::Scalar;
    std::size_t start = 0; ///< of its bytes, units of text or references
    std::uint64_t count = 0; ///< of those; a dictionary has two references for each pair
    std::size_t unitSize = 0;

    bool isCollection() const noexcept { return kind == Kind::Array || kind == Kind::Dictionary; }
    std::uint64_t references() const noexcept { return isCollection() ? count : 0; }
    /// At most, in UTF-8.
    std::uint64_t textBytes() const noexcept { return isCollection() ? 0 : count * (unitSize == 2 ? 3 : 1); }
};

/// What an object comes to with everything in it. A file may name one object many times over, so that a
/// few hundred bytes come to billions of values.
struct Extent {
    std::uint64_t values = 0;
    std::uint64_t textBytes = 0; ///< of texts and data
    std::size_t depth = 0;
};

class BinaryGuard {
public:
    explicit BinaryGuard(std::string_view bytes)
        : bytes_(bytes)
    {
    }

    Soundness soundness()
    {
        const bool isSound = isSoundWithinBounds();
        return isTooLarge_ ? Soundness::TooLarge : isSound ? Soundness::Sound : Soundness::Malformed;
    }

    bool holdsForeignText() const noexcept { return holdsForeignText_; }

private:
    struct Frame {
        std::uint64_t number;
        Object object;
        std::size_t next = 0;
        Extent extent;
    };

    bool isSoundWithinBounds()
    {
        if (!readTrailer() || !enter(top_))
            return false;
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            if (frame.next == frame.object.references()) {
                if (!leave())
                    return false;
                continue;
            }
            const std::uint64_t child = number(frame.object.start + frame.next * referenceSize_, referenceSize_);
            const bool isKey = frame.object.kind == Kind::Dictionary && frame.next < frame.object.count / 2;
            ++frame.next;
            if (child >= extents_.size() || (isKey && !isKeyText(child)))
                return false;
            if (extents_[child].values > 0) {
                if (!add(frame.extent, extents_[child]))
                    return false;
            } else if (!enter(child)) {
                return false;
            }
        }
        return true;
    }

    bool readTrailer()
    {
        if (bytes_.size() < headerSize + trailerSize)
            return false;
        end_ = bytes_.size() - trailerSize;
        offsetSize_ = byte(end_ + 6);
        referenceSize_ = byte(end_ + 7);
        const std::uint64_t objects = number(end_ + 8, 8);
        top_ = number(end_ + 16, 8);
        const std::uint64_t table = number(end_ + 24, 8);
        if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8)
            return false;
        if (table < headerSize || table > end_ || top_ >= objects || objects > (end_ - table) / offsetSize_)
            return false;
        if (objects > mostPropertyListValues)
            return tooLarge();
        end_ = table;
        extents_.resize(objects);
        return true;
    }

    /// Starts on an object; one without references is done at once.
    bool enter(std::uint64_t number)
    {
        const auto object = objectAt(number);
        // A collection that is open already holds itself.
        if (!object || std::ranges::find(frames_, number, &Frame::number) != frames_.end())
            return false;
        if (frames_.size() > deepestPropertyList)
            return tooLarge();
        holdsForeignText_ = holdsForeignText_ || (object->kind == Kind::Text && (hasNul(*object) || hasHalf(*object)));
        frames_.push_back({ number, *object, 0, { 1, object->textBytes(), object->isCollection() ? 1U : 0U } });
        return object->references() > 0 || leave();
    }

    bool leave()
    {
        const Frame done = frames_.back();
        frames_.pop_back();
        extents_[done.number] = done.extent;
        return frames_.empty() || add(frames_.back().extent, done.extent);
    }

    bool add(Extent& sum, const Extent& part)
    {
        sum.values += part.values;
        sum.textBytes += part.textBytes;
        sum.depth = std::max(sum.depth, part.depth + 1);
        return (sum.values <= mostPropertyListValues && sum.textBytes <= mostTextBytes
                   && sum.depth <= deepestPropertyList)
            || tooLarge();
    }

    bool tooLarge()
    {
        isTooLarge_ = true;
        return false;
    }

    /// A text without a NUL: the library ends the process at a key that has one.
    bool isKeyText(std::uint64_t number) const
    {
        const auto object = objectAt(number);
        return object && object->kind == Kind::Text && !hasNul(*object);
    }

    bool hasNul(const Object& text) const
    {
        for (std::size_t unit = 0; unit < text.count; ++unit) {
            const std::size_t at = text.start + unit * text.unitSize;
            if (byte(at) == 0 && (text.unitSize == 1 || byte(at + 1) == 0))
                return true;
        }
        return false;
    }

    /// Half of a character that takes two units.
    bool hasHalf(const Object& text) const
    {
        const auto kind = [&](std::size_t unit) { // 0xD8: a first half, 0xDC: a second one
            return text.unitSize == 2 && unit < text.count ? byte(text.start + unit * 2) & 0xFC : 0U;
        };
        for (std::size_t unit = 0; unit < text.count; ++unit) {
            if (kind(unit) == 0xDC || (kind(unit) == 0xD8 && kind(unit + 1) != 0xDC))
                return true;
            unit += kind(unit) == 0xD8 ? 1 : 0;
        }
        return false;
    }

    std::optional<Object> objectAt(std::uint64_t index) const
    {
        std::size_t at = number(end_ + index * offsetSize_, offsetSize_);
        if (at < headerSize || at >= end_)
            return std::nullopt;
        const unsigned marker = byte(at++);
        std::uint64_t count = marker & 0xF;
        switch (marker >> 4) {
        case 0x0:
            return object(Kind::Scalar, at, 0, 1);
        case 0x1:
        case 0x2:
            return count <= 4 ? object(Kind::Scalar, at, std::uint64_t { 1 } << count, 1) : std::nullopt;
        case 0x3:
            return object(Kind::Scalar, at, 8, 1);
        case 0x8:
            return object(Kind::Scalar, at, count + 1, 1);
        default:
            break;
        }
        if (count == 0xF) {
            if (at >= end_ || (byte(at) >> 4) != 0x1 || (byte(at) & 0xF) > 3)
                return std::nullopt;
            const std::size_t size = std::size_t { 1 } << (byte(at++) & 0xF);
            if (size > end_ - at)
                return std::nullopt;
            count = number(at, size);
            at += size;
        }
        switch (marker >> 4) {
        case 0x4:
            return object(Kind::Scalar, at, count, 1);
        case 0x5:
            return object(Kind::Text, at, count, 1);
        case 0x6:
            return object(Kind::Text, at, count, 2);
        case 0xA:
            return object(Kind::Array, at, count, referenceSize_);
        case 0xD:
            return count <= end_ ? object(Kind::Dictionary, at, count * 2, referenceSize_) : std::nullopt;
        default:
            return std::nullopt;
        }
    }

    /// Empty when it doesn't lie inside the file.
    std::optional<Object> object(Kind kind, std::size_t start, std::uint64_t count, std::size_t unitSize) const
    {
        if (start > end_ || count > (end_ - start) / unitSize)
            return std::nullopt;
        return Object { kind, start, count, unitSize };
    }

    unsigned byte(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }

    std::uint64_t number(std::size_t at, std::size_t size) const
    {
        std::uint64_t value = 0;
        for (std::size_t index = 0; index < size; ++index)
            value = value << 8 | byte(at + index);
        return value;
    }

    const std::string_view bytes_;
    std::size_t end_ = 0; ///< of the objects, where the table of their offsets starts
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t top_ = 0;
    std::vector<Extent> extents_; ///< by object; without values: not known yet
    std::vector<Frame> frames_;
    bool isTooLarge_ = false;
    bool holdsForeignText_ = false;
};

} // namespace

Soundness soundnessOfBinaryPropertyList(std::string_view bytes)
{
    return BinaryGuard(bytes).soundness();
}

bool binaryPropertyListHoldsForeignText(std::string_view bytes)
{
    BinaryGuard guard(bytes);
    return guard.soundness() == Soundness::Sound && guard.holdsForeignText();
}

} // namespace platform::detail
