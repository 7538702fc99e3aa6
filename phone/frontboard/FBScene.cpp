#include "phone/frontboard/scene_settings.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// As the system numbers them.
enum class SceneVisibility : NSUInteger { Background = 1, Foreground = 2 };

/// What an application shows, as the system manages it.
class FBScene : public NSObject {
public:
    id clientProcess;
    id settings;

    void update(const id& newSettings, const id&, const id& completion)
    {
        const bool existed = static_cast<bool>(settings);
        const bool wasForeground = isForeground(settings);
        settings = newSettings;
        if (!existed || wasForeground != isForeground(settings)) {
            const auto visibility = isForeground(settings) ? SceneVisibility::Foreground : SceneVisibility::Background;
            const id manager = send<"sharedInstance">(id(classNamed<"SBMainDisplaySceneManager">()));
            send<"_noteDidChangeToVisibility:previouslyExisted:forScene:", void>(
                manager, visibility, existed, id(this));
        }
        callBlock(completion, id(this));
    }
};

constexpr MethodDefinition methods[] {
    getter<"clientProcess", &FBScene::clientProcess>(),
    setter<"setClientProcess:", &FBScene::clientProcess>(),
    getter<"settings", &FBScene::settings>(),
    method<"updateSettings:withTransitionContext:completion:", &FBScene::update>(),
};

} // namespace

extern const ClassDefinition FBScene_class { .name = "FBScene", .allocate = allocate<FBScene>, .methods = methods };

} // namespace phone
