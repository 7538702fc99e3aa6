#include "platform/uikit/keyboard_layout.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {

namespace {

// Points.
constexpr double margin = 3; ///< at the sides
constexpr double gap = 6; ///< between keys
constexpr double rowGap = 11;
constexpr double topMargin = 8;
constexpr double bottomMargin = 3;
constexpr std::size_t columns = 10; ///< of the widest row

struct Rows {
    KeyPage page;
    std::array<std::string_view, 3> rows; ///< of the page's characters
};

constexpr Rows pages[] {
    { KeyPage::Letters, { "qwertyuiop", "asdfghjkl", "zxcvbnm" } },
    { KeyPage::Digits, { "1234567890", "-/:;()$&@\"", ".,?!'" } },
    { KeyPage::Symbols, { "[]{}#%^*+=", "_\\|~<>€£¥•", ".,?!'" } },
};

constexpr std::string_view padRows[] { "123", "456", "789" };

std::vector<std::string> charactersOf(std::string_view row)
{
    std::vector<std::string> characters;
    for (const char c : row)
        if ((static_cast<unsigned char>(c) & 0xC0) == 0x80)
            characters.back() += c;
        else
            characters.emplace_back(1, c);
    return characters;
}

/// Keys beside each other, the room shared by their weights.
class Row {
public:
    Row(std::vector<KeyCap>& keys, double y, double height)
        : keys_(keys)
        , y_(y)
        , height_(height)
    {
    }

    void add(KeyCap key, double x, double width)
    {
        key.frame = CGRectMake(x, y_, width, height_);
        keys_.push_back(std::move(key));
    }

    /// As wide as wanted, in the middle of the room from one x to another.
    void addCharacters(const std::vector<std::string>& characters, double left, double right, double width)
    {
        const auto count = static_cast<double>(characters.size());
        double x = (left + right - count * width - (count - 1) * gap) / 2;
        for (const std::string& character : characters) {
            add({ .text = character }, x, width);
            x += width + gap;
        }
    }

private:
    std::vector<KeyCap>& keys_;
    double y_;
    double height_;
};

KeyCap pageKey(KeyPage page)
{
    return { .kind = KeyKind::Page, .page = page };
}

std::vector<KeyCap> padKeys(KeyPage page, CGSize size)
{
    std::vector<KeyCap> keys;
    const double width = (size.width - 2 * gap - 2 * gap) / 3;
    const double height = (size.height - topMargin + gap - 3 * gap - gap) / 4;
    const auto frameOf = [&](std::size_t column, std::size_t row) {
        return CGRectMake(gap + static_cast<double>(column) * (width + gap),
            topMargin - gap / 2 + static_cast<double>(row) * (height + gap), width, height);
    };
    for (std::size_t row = 0; row < std::size(padRows); ++row)
        for (std::size_t column = 0; column < 3; ++column)
            keys.push_back({ .text = std::string(1, padRows[row][column]), .frame = frameOf(column, row) });
    if (page == KeyPage::DecimalPad)
        keys.push_back({ .text = ".", .frame = frameOf(0, 3) });
    if (page == KeyPage::PhonePad)
        keys.push_back({ .text = "+", .frame = frameOf(0, 3) });
    keys.push_back({ .text = "0", .frame = frameOf(1, 3) });
    keys.push_back({ .kind = KeyKind::Delete, .frame = frameOf(2, 3) });
    return keys;
}

/// What stands beside the space bar of the letters.
std::vector<std::string> besideSpace(KeyboardType type)
{
    switch (type) {
    case KeyboardType::Url:
        return { ".", "/", ".com" };
    case KeyboardType::EmailAddress:
        return { "@", "." };
    case KeyboardType::Twitter:
        return { "@", "#" };
    case KeyboardType::WebSearch:
        return { "." };
    default:
        return {};
    }
}

} // namespace

KeyPage firstPage(KeyboardType type) noexcept
{
    switch (type) {
    case KeyboardType::NumbersAndPunctuation:
        return KeyPage::Digits;
    case KeyboardType::NumberPad:
    case KeyboardType::AsciiNumberPad:
        return KeyPage::NumberPad;
    case KeyboardType::PhonePad:
        return KeyPage::PhonePad;
    case KeyboardType::DecimalPad:
        return KeyPage::DecimalPad;
    default:
        return KeyPage::Letters;
    }
}

bool isPadPage(KeyPage page) noexcept
{
    return page == KeyPage::NumberPad || page == KeyPage::DecimalPad || page == KeyPage::PhonePad;
}

std::vector<KeyCap> keysOf(KeyPage page, KeyboardType type, CGSize size)
{
    if (isPadPage(page))
        return padKeys(page, size);
    const auto known = std::ranges::find(pages, page, &Rows::page);
    const double height = (size.height - topMargin - bottomMargin - 3 * rowGap) / 4;
    const double left = margin;
    const double right = size.width - margin;
    const double width = (right - left - (columns - 1) * gap) / columns;
    const double wide = width * 1.3 + gap / 2; ///< of what stands at the ends of the third row
    std::vector<KeyCap> keys;
    const auto rowAt = [&](int number) { return Row(keys, topMargin + number * (height + rowGap), height); };
    rowAt(0).addCharacters(charactersOf(known->rows[0]), left, right, width);
    rowAt(1).addCharacters(charactersOf(known->rows[1]), left, right, width);
    Row third = rowAt(2);
    third.add(page == KeyPage::Letters ? KeyCap { .kind = KeyKind::Shift }
            : page == KeyPage::Digits  ? pageKey(KeyPage::Symbols)
                                       : pageKey(KeyPage::Digits),
        left, wide);
    const std::vector<std::string> characters = charactersOf(known->rows[2]);
    const double between = right - left - 2 * (wide + 2 * gap);
    const auto count = static_cast<double>(characters.size());
    third.addCharacters(
        characters, left, right, page == KeyPage::Letters ? width : (between - (count - 1) * gap) / count);
    third.add({ .kind = KeyKind::Delete }, right - wide, wide);
    Row last = rowAt(3);
    const double quarter = (right - left - 2 * gap) / 4;
    last.add(pageKey(page == KeyPage::Letters ? KeyPage::Digits : KeyPage::Letters), left, quarter);
    double spaceLeft = left + quarter + gap;
    double spaceRight = right - quarter - gap;
    const std::vector<std::string> beside = page == KeyPage::Letters ? besideSpace(type) : std::vector<std::string>();
    const double besideWidth = width * 1.15;
    spaceRight -= static_cast<double>(beside.size()) * (besideWidth + gap);
    if (type == KeyboardType::Url && page == KeyPage::Letters)
        spaceRight = spaceLeft; // no address has a space
    if (spaceRight > spaceLeft)
        last.add({ .kind = KeyKind::Space }, spaceLeft, spaceRight - spaceLeft);
    double x = spaceRight > spaceLeft ? spaceRight + gap : spaceLeft;
    const double each = spaceRight > spaceLeft
        ? besideWidth
        : (right - quarter - spaceLeft) / std::max<double>(static_cast<double>(beside.size()), 1) - gap;
    for (const std::string& character : beside) {
        last.add({ .text = character }, x, each);
        x += each + gap;
    }
    last.add({ .kind = KeyKind::Return }, right - quarter, quarter);
    return keys;
}

const KeyCap* keyNear(const std::vector<KeyCap>& keys, CGPoint point) noexcept
{
    const auto distance = [point](const KeyCap& key) {
        const double x = std::max({ key.frame.origin.x - point.x, 0.0, point.x - CGRectGetMaxX(key.frame) });
        const double y = std::max({ key.frame.origin.y - point.y, 0.0, point.y - CGRectGetMaxY(key.frame) });
        return x * x + y * y;
    };
    const auto nearest = std::ranges::min_element(keys, {}, distance);
    return nearest == keys.end() ? nullptr : &*nearest;
}

namespace {

struct ReturnKey {
    std::string_view title;
    bool isProminent;
};

constexpr ReturnKey returnKeys[] { { "return", false }, { "go", true }, { "search", true }, { "join", true },
    { "next", false }, { "route", true }, { "search", true }, { "send", true }, { "search", true }, { "done", true },
    { "emergency", true }, { "continue", false } };

const ReturnKey& returnKey(long type) noexcept
{
    return returnKeys[type > 0 && static_cast<std::size_t>(type) < std::size(returnKeys) ? type : 0];
}

} // namespace

std::string returnKeyTitle(long returnKeyType)
{
    return std::string(returnKey(returnKeyType).title);
}

bool isReturnKeyProminent(long returnKeyType) noexcept
{
    return returnKey(returnKeyType).isProminent;
}

} // namespace platform
