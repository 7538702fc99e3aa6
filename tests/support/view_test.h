#pragma once

#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <gtest/gtest.h>

namespace support {

template <platform::Name N> platform::id classObject()
{
    return platform::id(platform::objc_getClass(N.view()));
}

/// A process with views, a small screen and a held clock.
class ViewTest : public testing::Test {
protected:
    ViewTest()
    {
        platform::holdClock();
        for (const platform::ClassDefinition* definition : platform::uiKitFrameworkClasses())
            platform::registerClass(*definition);
        platform::setScreen({ 300, 200 }, 2);
    }

    /// Over the whole screen, and seen.
    static platform::id makeWindow()
    {
        const platform::id window = platform::send<"new">(classObject<"UIWindow">());
        platform::send<"setHidden:", void>(window, false);
        return window;
    }

    static platform::id makeView(const platform::CGRect& frame)
    {
        return platform::send<"initWithFrame:">(platform::send<"alloc">(classObject<"UIView">()), frame);
    }
};

} // namespace support
