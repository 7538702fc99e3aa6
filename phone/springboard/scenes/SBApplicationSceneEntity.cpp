#include "phone/springboard/scenes/scene_entity.h"

namespace phone {

using namespace platform;

namespace {

void setupSceneSettings(const id&, SEL, const id&, const id&) { }

constexpr MethodDefinition methods[] {
    method<"_setupSceneSettings:transitionContext:", &setupSceneSettings>(),
    getter<"actions", &SceneEntity::actions>(),
    getter<"application", &SceneEntity::application>(),
    setter<"setActions:", &SceneEntity::actions>(),
    setter<"setApplication:", &SceneEntity::application>(),
};

} // namespace

extern const ClassDefinition SBApplicationSceneEntity_class {
    .name = "SBApplicationSceneEntity", .allocate = allocate<SceneEntity>, .methods = methods
};

} // namespace phone
