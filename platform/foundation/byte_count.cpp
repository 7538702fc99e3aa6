#include "platform/foundation/classes.h"
#include "platform/foundation/value_objects.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace platform {

namespace {

enum class CountStyle : long { File = 0, Memory = 1, Decimal = 2, Binary = 3 };

struct Unit {
    const char* name;
    int decimals; ///< at most
};

constexpr std::array<Unit, 6> units { { { "KB", 0 }, { "MB", 1 }, { "GB", 2 }, { "TB", 2 }, { "PB", 2 },
    { "EB", 2 } } };

double rounded(double value, int decimals)
{
    const double factor = std::pow(10, decimals);
    return std::round(value * factor) / factor;
}

std::string withoutZeros(std::string number)
{
    if (number.find('.') == std::string::npos)
        return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.pop_back();
    return number;
}

/// In the largest unit of which there is one.
std::string byteCountText(std::int64_t count, double step)
{
    const double size = std::abs(static_cast<double>(count));
    if (count == 0)
        return "Zero KB";
    if (size < step)
        return std::to_string(count) + (size == 1 ? " byte" : " bytes");
    double value = size / step;
    std::size_t unit = 0;
    while (unit + 1 < units.size() && rounded(value, units[unit].decimals) >= step) {
        value /= step;
        ++unit;
    }
    std::array<char, 40> number;
    std::snprintf(number.data(), number.size(), "%.*f", units[unit].decimals, rounded(value, units[unit].decimals));
    return (count < 0 ? "-" : "") + withoutZeros(number.data()) + " " + units[unit].name;
}

id stringFromByteCount(const id&, SEL, std::int64_t count, NSInteger style)
{
    const auto chosen = static_cast<CountStyle>(style);
    const bool isBinary = chosen == CountStyle::Memory || chosen == CountStyle::Binary;
    return string(byteCountText(count, isBinary ? 1024 : 1000));
}

constexpr MethodDefinition methods[] {
    classMethod<"stringFromByteCount:countStyle:", &stringFromByteCount>(),
};

} // namespace

const ClassDefinition detail::NSByteCountFormatter_class { .name = "NSByteCountFormatter", .methods = methods };

} // namespace platform
