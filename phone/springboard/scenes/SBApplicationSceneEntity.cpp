#include "phone/springboard/scenes/scene_entity.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

void setupSceneSettings(const id& self, SEL, const id& settings, const id&)
{
    as<SceneEntity>(self)->deactivationReasons = ask<"deactivationReasons", NSUInteger>(settings).value_or(0);
}

constexpr MethodDefinition methods[] {
    method<"_setupSceneSettings:transitionContext:", &setupSceneSettings>(),
    getter<"actions", &SceneEntity::actions>(),
    getter<"application", &SceneEntity::application>(),
    getter<"deactivationReasons", &SceneEntity::deactivationReasons>(),
    setter<"setActions:", &SceneEntity::actions>(),
    setter<"setApplication:", &SceneEntity::application>(),
};

} // namespace

extern const ClassDefinition SBApplicationSceneEntity_class {
    .name = "SBApplicationSceneEntity", .allocate = allocate<SceneEntity>, .methods = methods
};

} // namespace phone
