#include "platform/foundation/value_objects.h"

#include "platform/foundation/files.h"

#include <functional>

namespace platform {

namespace detail {

namespace {

class Data final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSData_class;
    Data() = default;
    explicit Data(std::string bytes)
        : bytes(std::move(bytes))
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        return typeid(other) == typeid(Data) && static_cast<const Data&>(other).bytes == bytes;
    }
    std::size_t hashValue() const noexcept override { return std::hash<std::string> {}(bytes); }
    NSUInteger length() const noexcept { return bytes.size(); }

    const std::string bytes;
};

class Date final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSDate_class;
    explicit Date(double seconds = 0) noexcept
        : seconds(seconds)
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        return typeid(other) == typeid(Date) && static_cast<const Date&>(other).seconds == seconds;
    }
    std::size_t hashValue() const noexcept override { return std::hash<double> {}(seconds); }
    double timeIntervalSinceReferenceDate() const noexcept { return seconds; }

    const double seconds;
};

id self(const id& self, SEL)
{
    return self;
}

/// In one step in any case: who asks for less gets more.
bool writeToFile(const id& self, SEL, const id& path, bool)
{
    const auto text = asString(path);
    return text && writeFileAtomically(*text, static_cast<const Data&>(*self).bytes) == 0;
}

constexpr MethodDefinition dataMethods[] {
    method<"copy", &self>(),
    method<"length", &Data::length>(),
    method<"writeToFile:atomically:", &writeToFile>(),
};

constexpr MethodDefinition dateMethods[] {
    method<"copy", &self>(),
    method<"timeIntervalSinceReferenceDate", &Date::timeIntervalSinceReferenceDate>(),
};

} // namespace

const ClassDefinition NSData_class { .name = "NSData", .allocate = allocate<Data>, .methods = dataMethods };
const ClassDefinition NSDate_class { .name = "NSDate", .allocate = allocate<Date>, .methods = dateMethods };

} // namespace detail

id data(std::string_view bytes)
{
    return make<detail::Data>(std::string(bytes));
}

id dataTaking(std::string bytes)
{
    return make<detail::Data>(std::move(bytes));
}

std::optional<StringValue> asData(const id& object)
{
    const auto* const found = detail::exactly<detail::Data>(object);
    return found ? std::optional<StringValue>(std::in_place, object, found->bytes) : std::nullopt;
}

id date(double secondsSinceReferenceDate)
{
    return make<detail::Date>(secondsSinceReferenceDate);
}

std::optional<double> asDate(const id& object)
{
    const auto* const found = detail::exactly<detail::Date>(object);
    return found ? std::optional(found->seconds) : std::nullopt;
}

} // namespace platform
