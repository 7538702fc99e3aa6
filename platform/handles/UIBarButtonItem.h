#pragma once

#include "platform/handles/UIView.h"

namespace platform {

enum class UIBarButtonItemStyle : NSInteger { Plain = 0, Done = 2 };
enum class UIBarButtonSystemItem : NSInteger {
    Done = 0,
    Cancel = 1,
    Edit = 2,
    Save = 3,
    Add = 4,
    FlexibleSpace = 5,
    FixedSpace = 6,
    Action = 9,
    Search = 12,
    Trash = 16,
    Close = 24,
};

class UIBarButtonItem : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIBarButtonItem">(); }
    static UIBarButtonItem withTitle(const id& title, UIBarButtonItemStyle style, const id& target, SEL action)
    {
        return initialised<UIBarButtonItem, "initWithTitle:style:target:action:">(title, style, target, action);
    }
    static UIBarButtonItem withSystemItem(UIBarButtonSystemItem item, const id& target, SEL action)
    {
        return initialised<UIBarButtonItem, "initWithBarButtonSystemItem:target:action:">(item, target, action);
    }
    static UIBarButtonItem withCustomView(const UIView& view)
    {
        return initialised<UIBarButtonItem, "initWithCustomView:">(view);
    }

    void setTitle(const id& title) const { call<"setTitle:">(title); }
    void setEnabled(bool enabled) const { call<"setEnabled:">(enabled); }
};

} // namespace platform
