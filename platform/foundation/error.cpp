#include "platform/foundation/error.h"

#include "platform/foundation/value_objects.h"

namespace platform {

namespace detail {

namespace {

class Error final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSError_class;

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        const auto* const error = dynamic_cast<const Error*>(&other);
        return error && error->code == code && isEqual(error->domain, domain) && isEqual(error->userInfo, userInfo);
    }
    std::size_t hashValue() const noexcept override { return static_cast<std::size_t>(code); }

    id localizedDescription() const
    {
        const auto info = asDictionary(userInfo);
        return info ? (*info)["NSLocalizedDescription"] : nil;
    }

    id domain;
    NSInteger code = 0;
    id userInfo;
};

id Error_errorWithDomain(const id&, SEL, const id& domain, NSInteger code, const id& userInfo)
{
    const auto name = asString(domain);
    return error(name ? name->view() : "", code, userInfo);
}

constexpr MethodDefinition methods[] {
    getter<"code", &Error::code>(),
    getter<"domain", &Error::domain>(),
    classMethod<"errorWithDomain:code:userInfo:", &Error_errorWithDomain>(),
    method<"localizedDescription", &Error::localizedDescription>(),
    getter<"userInfo", &Error::userInfo>(),
};

} // namespace

const ClassDefinition NSError_class { .name = "NSError", .allocate = allocate<Error>, .methods = methods };

} // namespace detail

id error(std::string_view domain, std::int64_t code, const id& userInfo)
{
    const auto made = make<detail::Error>();
    made->domain = string(domain);
    made->code = code;
    made->userInfo = userInfo;
    return made;
}

} // namespace platform
