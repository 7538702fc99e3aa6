#include "platform/screen/framework.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <cstdio>
#include <dlfcn.h>
#include <string>

namespace platform {

namespace {

using ClassSpan = std::span<const ClassDefinition* const>;

/// The library that stands beside this one.
std::string pathOfFramework()
{
    Dl_info self {};
    dladdr(reinterpret_cast<const void*>(&pathOfFramework), &self);
    const std::string path = self.dli_fname ? self.dli_fname : "";
    return path.substr(0, path.rfind('/') + 1) + "libplatform-uikit.so";
}

ClassSpan load()
{
    void* const library = dlopen(pathOfFramework().c_str(), RTLD_NOW | RTLD_GLOBAL);
    void* const entry = library ? dlsym(library, "platformUIKitClasses") : nullptr;
    if (!entry) {
        std::fprintf(stderr, "can't load the view framework: %s\n", dlerror());
        return {};
    }
    return *reinterpret_cast<const ClassSpan* (*)()>(entry)();
}

id graphics()
{
    return id(classNamed<"UIGraphicsFunctions">());
}

id screen()
{
    return id(classNamed<"UIScreenFunctions">());
}

} // namespace

ClassSpan uiKitFrameworkClasses() noexcept
{
    static const ClassSpan classes = load();
    return classes;
}

void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale)
{
    send<"beginImageContextWithSize:opaque:scale:", void>(graphics(), size, opaque, scale);
}

id UIGraphicsGetImageFromCurrentImageContext()
{
    return send<"imageFromCurrentContext">(graphics());
}

void UIGraphicsEndImageContext()
{
    send<"endImageContext", void>(graphics());
}

id UIGraphicsGetCurrentContext()
{
    return send<"currentContext">(graphics());
}

id UIImagePNGRepresentation(const id& image)
{
    return askObject<"PNGRepresentation">(image);
}

id NSFontAttributeName()
{
    return string("NSFont");
}

id NSForegroundColorAttributeName()
{
    return string("NSColor");
}

std::string pictureOfScreen(double scale)
{
    const auto bytes = asData(send<"pictureAtScale:">(screen(), scale));
    return bytes ? bytes->text() : "";
}

std::string descriptionOfScreen()
{
    const auto text = asString(send<"descriptionOfWindows">(screen()));
    return text ? text->text() : "";
}

id elementsOfScreen()
{
    return send<"elementsOfWindows">(screen());
}

id viewOnScreenAt(CGPoint point)
{
    return send<"viewAt:">(screen(), point);
}

void touchScreenAt(CGPoint point, TouchKind kind)
{
    send<"touchAt:phase:", void>(screen(), point, kind);
}

bool typeOnKeyboard(std::string_view text)
{
    return send<"typeText:", bool>(screen(), string(text));
}

bool pressKey(std::string_view name)
{
    return send<"pressKey:", bool>(screen(), string(name));
}

void setScreen(CGSize size, double scale)
{
    send<"setSize:scale:", void>(screen(), size, scale);
}

void setScreenStyle(InterfaceStyle style)
{
    send<"setInterfaceStyle:", void>(screen(), style);
}

} // namespace platform
