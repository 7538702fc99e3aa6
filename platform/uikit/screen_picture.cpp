#include "platform/uikit/screen_picture.h"

#include "platform/foundation/values.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/renderer.h"

namespace platform {

namespace {

struct KeptPicture {
    double scale = 0;
    id picture {}; ///< nil for none
};

KeptPicture& kept()
{
    static auto* const picture = new KeptPicture;
    return *picture;
}

bool motionWasDrawn = false;

} // namespace

void noteMotion() noexcept
{
    motionWasDrawn = true;
}

void noteDamage() noexcept
{
    kept().picture = nil;
}

id pictureOfWindows(double scale)
{
    layoutAllWindows();
    if (kept().picture && kept().scale == scale && !animationsRun())
        return kept().picture;
    motionWasDrawn = false;
    const auto bitmap = renderScreen(scale);
    id picture = bitmap ? platform::data(encodePng(*bitmap)) : id();
    kept() = { scale, animationsRun() || motionWasDrawn ? id() : picture };
    return picture;
}

} // namespace platform
