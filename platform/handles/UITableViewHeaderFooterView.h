#pragma once

#include "platform/handles/UILabel.h"

namespace platform {

class UITableViewHeaderFooterView : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UITableViewHeaderFooterView">(); }
    static UITableViewHeaderFooterView withReuseIdentifier(const id& identifier)
    {
        return initialised<UITableViewHeaderFooterView, "initWithReuseIdentifier:">(identifier);
    }

    UIView contentView() const { return call<"contentView", UIView>(); }
    UILabel textLabel() const { return call<"textLabel", UILabel>(); }
    id reuseIdentifier() const { return call<"reuseIdentifier", id>(); }
    void setBackgroundView(const UIView& view) const { call<"setBackgroundView:">(view); }
};

} // namespace platform
