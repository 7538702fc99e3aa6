#pragma once

#include "platform/handles/Handle.h"

namespace platform {

class UIPasteboard : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIPasteboard">(); }
    static UIPasteboard general() { return callOn<"generalPasteboard", UIPasteboard>(id(classObject())); }

    id string() const { return call<"string", id>(); }
    void setString(const id& text) const { call<"setString:">(text); }
    id image() const { return call<"image", id>(); }
    void setImage(const id& image) const { call<"setImage:">(image); }
    NSInteger changeCount() const { return call<"changeCount", NSInteger>(); }
};

} // namespace platform
