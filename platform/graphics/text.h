#pragma once

#include "platform/graphics/canvas.h"

#include <limits>
#include <string>
#include <string_view>

namespace platform {

struct Font {
    double size = 17;
    int weight = 400; ///< 100 to 900; 700 is bold
    friend bool operator==(const Font&, const Font&) = default;
};

struct FontMetrics {
    double ascent = 0;
    double descent = 0;
};

enum class TextAlignment : long { Left = 0, Center = 1, Right = 2, Justified = 3, Natural = 4 };
enum class LineBreak : long {
    WordWrap = 0,
    CharacterWrap = 1,
    Clip = 2,
    TruncateHead = 3,
    TruncateTail = 4,
    TruncateMiddle = 5
};

struct TextLayout {
    Font font {};
    TextAlignment alignment = TextAlignment::Natural;
    LineBreak lineBreak = LineBreak::TruncateTail;
    long lines = 1; ///< at most; 0: as many as there is room for
};

constexpr double unlimitedWidth = std::numeric_limits<double>::infinity();

FontMetrics metricsOf(const Font& font);

/// The text in capitals.
std::string upperCaseText(std::string_view text);

/// What the text takes up in lines of that width at most. {0, 0} for "".
CGSize measureText(std::string_view text, const TextLayout& layout, double width = unlimitedWidth);

// Carets stand between the characters that a reader counts, which may be several code points. Offsets are bytes.

/// The caret's place before or after the one at that offset; its own at an end of the text.
std::size_t caretBefore(std::string_view text, std::size_t offset);
std::size_t caretAfter(std::string_view text, std::size_t offset);
/// In one line, from the start of the text: where the caret stands, and the place that is nearest to a point.
double caretPosition(std::string_view text, const Font& font, std::size_t offset);
std::size_t caretNear(std::string_view text, const Font& font, double position);

/// Draws into the rectangle, from its top; what doesn't fit is cut off as the layout says.
void drawText(Canvas& canvas, std::string_view text, const TextLayout& layout, const CGRect& rect, const Color& color);

} // namespace platform
