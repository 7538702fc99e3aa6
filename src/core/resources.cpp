#include "core/resources.h"

#include "core/paths.h"
#include "core/settings.h"
#include "core/text.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view bundlePath = "/Library/Application Support/AppLedger/Resources.bundle";
constexpr NSInteger alertStyle = 1;
constexpr NSInteger defaultActionStyle = 0;

/// The two file managers, in the order of the owner's choice.
struct FileManagers {
    std::string chosen;
    std::string other;
    std::string_view failure;
};

FileManagers fileManagers()
{
    const auto opener = asString(ALSettings::directoryOpener());
    if (opener && *opener == "fila")
        return { "fila://", "filza://", "Install Fila app to open the selected directory" };
    return { "filza://", "fila://", "Install Filza app to open the selected directory" };
}

id application()
{
    return askObject<"sharedApplication">(id(classNamed<"UIApplication">()));
}

bool canOpen(const std::string& scheme)
{
    return ask<"canOpenURL:", bool>(application(), url(scheme)).value_or(false);
}

void open(const id& url, const id& completion)
{
    ask<"openURL:options:completionHandler:", void>(application(), url, dictionary({}), completion);
}

void showFailure(std::string_view text, const id& controller)
{
    const id alert = askObject<"alertControllerWithTitle:message:preferredStyle:">(
        id(classNamed<"UIAlertController">()), string("AppLedger"), string(ALLoc(text)), alertStyle);
    ask<"addAction:", void>(alert,
        askObject<"actionWithTitle:style:handler:">(
            id(classNamed<"UIAlertAction">()), string("Okay"), defaultActionStyle, nil));
    ask<"presentViewController:animated:completion:", void>(controller, alert, true, nil);
}

id sharedInstance(const id&, SEL)
{
    return &ALHelper::sharedInstance();
}

id imageNamed(const id&, SEL, const id& name)
{
    return ALHelper::imageNamed(name);
}

void openDirectory(const id&, SEL, const id& url, const id& controller)
{
    ALHelper::openDirectoryAtURL(url, controller);
}

constexpr MethodDefinition methods[] {
    classMethod<"imageNamed:", &imageNamed>(),
    classMethod<"openDirectoryAtURL:fromController:", &openDirectory>(),
    getter<"resoucesBundle", &ALHelper::resoucesBundle>(),
    setter<"setResoucesBundle:", &ALHelper::resoucesBundle>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

const ClassDefinition ALHelper::definition { .name = "ALHelper", .allocate = allocate<ALHelper>, .methods = methods };

ALHelper& ALHelper::sharedInstance()
{
    static dispatch_once_t once;
    static ALHelper* shared;
    dispatch_once(once, [] {
        const Ref<ALHelper> helper = make<ALHelper>();
        helper->resoucesBundle
            = askObject<"bundleWithPath:">(id(classNamed<"NSBundle">()), string(ALCompatiblePath(bundlePath)));
        shared = static_cast<ALHelper*>(id(helper).leak());
    });
    return *shared;
}

id ALHelper::imageNamed(const id& name)
{
    return askObject<"imageNamed:inBundle:">(id(classNamed<"UIImage">()), name, sharedInstance().resoucesBundle);
}

void ALHelper::openDirectoryAtURL(const id& directory, const id& controller)
{
    const auto path = asString(askObject<"stringByAddingPercentEncodingWithAllowedCharacters:">(
        askObject<"path">(directory), askObject<"URLQueryAllowedCharacterSet">(id(classNamed<"NSCharacterSet">()))));
    const std::string encoded = path ? path->text() : std::string();
    const FileManagers managers = fileManagers();
    const id inChosen = url(managers.chosen + "view" + encoded);
    const id inOther = url(managers.other + "view" + encoded);
    if (inChosen && canOpen(managers.chosen))
        return open(inChosen, nil);
    if (inOther && canOpen(managers.other))
        return open(inOther, nil);
    if (canOpen("ifile://"))
        return open(url("ifile://file://" + encoded), nil);
    if (!inChosen)
        return showFailure(managers.failure, controller);
    open(inChosen, block([failure = managers.failure, controller](bool isOpen) {
        if (!isOpen)
            dispatch_async(dispatch_get_main_queue(), [failure, controller] { showFailure(failure, controller); });
    }));
}

} // namespace appledger
