#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

class UIImage : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIImage">(); }

    /// Nil for a file that holds no picture.
    static UIImage withContentsOfFile(const id& path)
    {
        return callOn<"imageWithContentsOfFile:", UIImage>(id(classObject()), path);
    }

    CGSize size() const { return call<"size", CGSize>(); }
    CGFloat scale() const { return call<"scale", CGFloat>(); }
    void drawInRect(const CGRect& rect) const { call<"drawInRect:">(rect); }
};

} // namespace platform
