#pragma once

#include "platform/handles/UITextField.h"

namespace platform {

enum class UISearchBarStyle : NSInteger { Default = 0, Prominent = 1, Minimal = 2 };

class UISearchBar : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UISearchBar">(); }
    static UISearchBar withFrame(const CGRect& frame) { return initialised<UISearchBar, "initWithFrame:">(frame); }

    /// Never nil.
    id text() const { return call<"text", id>(); }
    void setText(const id& text) const { call<"setText:">(text); }
    id placeholder() const { return call<"placeholder", id>(); }
    void setPlaceholder(const id& placeholder) const { call<"setPlaceholder:">(placeholder); }
    bool showsCancelButton() const { return call<"showsCancelButton", bool>(); }
    void setShowsCancelButton(bool shows, bool animated) const
    {
        call<"setShowsCancelButton:animated:">(shows, animated);
    }
    void setSearchBarStyle(UISearchBarStyle style) const { call<"setSearchBarStyle:">(style); }
    UITextField searchTextField() const { return call<"searchTextField", UITextField>(); }
    /// It isn't kept.
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
};

} // namespace platform
