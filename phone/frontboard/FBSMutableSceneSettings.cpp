#include "phone/frontboard/scene_settings.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

constexpr NSUInteger leavingFront = 1;

/// A scene is in front or isn't; older versions say so the other way round.
class FBSMutableSceneSettings : public NSObject {
public:
    bool foreground = false;
    NSUInteger deactivationReasons = 0;

    bool isBackgrounded() const { return !foreground; }
    void setBackgrounded(bool backgrounded) { foreground = !backgrounded; }
};

constexpr MethodDefinition methods[] {
    getter<"deactivationReasons", &FBSMutableSceneSettings::deactivationReasons>(),
    method<"isBackgrounded", &FBSMutableSceneSettings::isBackgrounded>().until(12),
    getter<"isForeground", &FBSMutableSceneSettings::foreground>().since(13),
    method<"setBackgrounded:", &FBSMutableSceneSettings::setBackgrounded>().until(12),
    setter<"setDeactivationReasons:", &FBSMutableSceneSettings::deactivationReasons>(),
    setter<"setForeground:", &FBSMutableSceneSettings::foreground>().since(13),
};

} // namespace

extern const ClassDefinition FBSMutableSceneSettings_class {
    .name = "FBSMutableSceneSettings", .allocate = allocate<FBSMutableSceneSettings>, .methods = methods
};

id makeSceneSettings(bool foreground)
{
    id settings = send<"new">(id(classNamed<"FBSMutableSceneSettings">()));
    if (!ask<"setForeground:", void>(settings, foreground))
        send<"setBackgrounded:", void>(settings, !foreground);
    if (!foreground)
        send<"setDeactivationReasons:", void>(settings, leavingFront);
    return settings;
}

bool isForeground(const id& settings)
{
    if (const auto answer = ask<"isForeground", bool>(settings))
        return *answer;
    return !ask<"isBackgrounded", bool>(settings).value_or(true);
}

} // namespace phone
