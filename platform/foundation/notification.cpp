#include "platform/foundation/notification_center.h"
#include "platform/foundation/value_objects.h"

namespace platform {

namespace detail {

namespace {

class Notification final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSNotification_class;

    id name;
    id object;
    id userInfo;
};

constexpr MethodDefinition methods[] {
    getter<"name", &Notification::name>(),
    getter<"object", &Notification::object>(),
    getter<"userInfo", &Notification::userInfo>(),
};

} // namespace

const ClassDefinition NSNotification_class {
    .name = "NSNotification", .allocate = allocate<Notification>, .methods = methods
};

} // namespace detail

id notification(std::string_view name, const id& object, const id& userInfo)
{
    const auto made = make<detail::Notification>();
    made->name = string(name);
    made->object = object;
    made->userInfo = userInfo;
    return made;
}

} // namespace platform
