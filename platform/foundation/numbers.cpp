#include "platform/foundation/value_objects.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace platform {

namespace detail {

class Number final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSNumber_class;
    Number() = default;
    Number(NumberKind kind, std::int64_t value) noexcept
        : kind(kind)
        , integer(value)
    {
    }
    explicit Number(double value) noexcept
        : kind(NumberKind::Real)
        , real(value)
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override;

    std::int64_t asInteger() const noexcept;
    double asDouble() const noexcept { return kind == NumberKind::Real ? real : static_cast<double>(integer); }

    const NumberKind kind = NumberKind::Integer;
    const std::int64_t integer = 0;
    const double real = 0;
};

namespace {

constexpr double twoToThe63 = 9223372036854775808.0;

/// The integer that a real is equal to, if any: the one place where two kinds of number are compared, so
/// that equal numbers have equal hashes.
std::optional<std::int64_t> exactInteger(const Number& number) noexcept
{
    if (number.kind != NumberKind::Real)
        return number.integer;
    if (number.real >= -twoToThe63 && number.real < twoToThe63 && number.real == std::trunc(number.real))
        return static_cast<std::int64_t>(number.real);
    return std::nullopt;
}

const Number& numberOf(const id& self)
{
    return static_cast<const Number&>(*self);
}

template <class T> T Number_integer(const id& self, SEL)
{
    return static_cast<T>(numberOf(self).asInteger());
}

template <class T> T Number_real(const id& self, SEL)
{
    return static_cast<T>(numberOf(self).asDouble());
}

bool Number_boolValue(const id& self, SEL)
{
    return boolValue(self);
}

id Number_self(const id& self, SEL)
{
    return self;
}

id Number_stringValue(const id& self, SEL)
{
    return string(numberText(self));
}

bool Number_isEqualToNumber(const id& self, SEL, const id& other)
{
    return other && self->isEqualTo(*other);
}

id Number_numberWithBool(const id&, SEL, bool value)
{
    return boolean(value);
}

id Number_numberWithInteger(const id&, SEL, NSInteger value)
{
    return number(value);
}

id Number_numberWithDouble(const id&, SEL, double value)
{
    return real(value);
}

constexpr MethodDefinition methods[] {
    method<"boolValue", &Number_boolValue>(),
    method<"copy", &Number_self>(),
    method<"description", &Number_stringValue>(),
    method<"doubleValue", &Number_real<double>>(),
    method<"floatValue", &Number_real<float>>(),
    method<"intValue", &Number_integer<int>>(),
    method<"integerValue", &Number_integer<NSInteger>>(),
    method<"isEqualToNumber:", &Number_isEqualToNumber>(),
    method<"longLongValue", &Number_integer<long long>>(),
    classMethod<"numberWithBool:", &Number_numberWithBool>(),
    classMethod<"numberWithDouble:", &Number_numberWithDouble>(),
    classMethod<"numberWithInteger:", &Number_numberWithInteger>(),
    method<"stringValue", &Number_stringValue>(),
    method<"unsignedIntegerValue", &Number_integer<NSUInteger>>(),
    method<"unsignedLongLongValue", &Number_integer<unsigned long long>>(),
};

} // namespace

const ClassDefinition NSNumber_class { .name = "NSNumber", .allocate = allocate<Number>, .methods = methods };

bool Number::isEqualTo(const NSObject& other) const noexcept
{
    if (typeid(other) != typeid(Number))
        return false;
    const auto& number = static_cast<const Number&>(other);
    const auto left = exactInteger(*this);
    const auto right = exactInteger(number);
    if (left || right)
        return left == right;
    return real == number.real || (std::isnan(real) && std::isnan(number.real));
}

std::size_t Number::hashValue() const noexcept
{
    if (const auto exact = exactInteger(*this))
        return std::hash<std::int64_t> {}(*exact);
    return std::isnan(real) ? 0 : std::hash<double> {}(real);
}

std::int64_t Number::asInteger() const noexcept
{
    if (kind != NumberKind::Real)
        return integer;
    using Limits = std::numeric_limits<std::int64_t>;
    if (std::isnan(real))
        return 0;
    if (real >= twoToThe63)
        return Limits::max();
    return real < -twoToThe63 ? Limits::min() : static_cast<std::int64_t>(real);
}

std::string numberText(const id& object)
{
    const Number& number = numberOf(object);
    char text[32];
    const auto end = number.kind == NumberKind::Real ? std::to_chars(text, text + sizeof text, number.real)
                                                     : std::to_chars(text, text + sizeof text, number.integer);
    return { text, end.ptr };
}

} // namespace detail

using detail::Number;

id boolean(bool value)
{
    static NSObject* const no = id(make<Number>(NumberKind::Boolean, 0)).leak();
    static NSObject* const yes = id(make<Number>(NumberKind::Boolean, 1)).leak();
    return value ? yes : no;
}

id number(std::int64_t value)
{
    return make<Number>(NumberKind::Integer, value);
}

id real(double value)
{
    return make<Number>(value);
}

std::optional<NumberKind> numberKind(const id& object)
{
    const auto* const found = detail::exactly<Number>(object);
    return found ? std::optional(found->kind) : std::nullopt;
}

std::optional<bool> asBool(const id& object)
{
    const auto* const found = detail::exactly<Number>(object);
    return found ? std::optional(found->kind == NumberKind::Real ? found->real != 0 : found->integer != 0)
                 : std::nullopt;
}

std::optional<std::int64_t> asInteger(const id& object)
{
    const auto* const found = detail::exactly<Number>(object);
    return found ? std::optional(found->asInteger()) : std::nullopt;
}

std::optional<double> asDouble(const id& object)
{
    const auto* const found = detail::exactly<Number>(object);
    return found ? std::optional(found->asDouble()) : std::nullopt;
}

} // namespace platform
