#pragma once

#include "platform/foundation/block.h"
#include "platform/handles/UIImage.h"

namespace platform {

class UIGraphicsImageRenderer : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIGraphicsImageRenderer">(); }
    static UIGraphicsImageRenderer withSize(CGSize size)
    {
        return initialised<UIGraphicsImageRenderer, "initWithSize:">(size);
    }

    /// What a function without arguments draws.
    template <class Actions> UIImage image(Actions actions) const
    {
        return call<"imageWithActions:", UIImage>(block([actions = std::move(actions)](const id&) { actions(); }));
    }
};

} // namespace platform
