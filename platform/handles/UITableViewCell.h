#pragma once

#include "platform/handles/UIImageView.h"
#include "platform/handles/UILabel.h"

namespace platform {

enum class UITableViewCellStyle : NSInteger { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class UITableViewCellAccessoryType : NSInteger {
    None = 0,
    DisclosureIndicator = 1,
    DetailDisclosureButton = 2,
    Checkmark = 3,
    DetailButton = 4,
};
enum class UITableViewCellSelectionStyle : NSInteger { None = 0, Blue = 1, Gray = 2, Default = 3 };

class UITableViewCell : public UIView {
public:
    using UIView::UIView;
    static Class classObject() { return classNamed<"UITableViewCell">(); }
    static UITableViewCell withStyle(UITableViewCellStyle style, const id& reuseIdentifier)
    {
        return initialised<UITableViewCell, "initWithStyle:reuseIdentifier:">(style, reuseIdentifier);
    }

    UIView contentView() const { return call<"contentView", UIView>(); }
    UILabel textLabel() const { return call<"textLabel", UILabel>(); }
    /// Nil in the style that has none, as the next.
    UILabel detailTextLabel() const { return call<"detailTextLabel", UILabel>(); }
    UIImageView imageView() const { return call<"imageView", UIImageView>(); }
    id reuseIdentifier() const { return call<"reuseIdentifier", id>(); }
    UITableViewCellAccessoryType accessoryType() const { return call<"accessoryType", UITableViewCellAccessoryType>(); }
    void setAccessoryType(UITableViewCellAccessoryType type) const { call<"setAccessoryType:">(type); }
    UIView accessoryView() const { return call<"accessoryView", UIView>(); }
    void setAccessoryView(const UIView& view) const { call<"setAccessoryView:">(view); }
    void setBackgroundView(const UIView& view) const { call<"setBackgroundView:">(view); }
    void setSelectedBackgroundView(const UIView& view) const { call<"setSelectedBackgroundView:">(view); }
    void setSelectionStyle(UITableViewCellSelectionStyle style) const { call<"setSelectionStyle:">(style); }
    void setSeparatorInset(const UIEdgeInsets& inset) const { call<"setSeparatorInset:">(inset); }
    bool isSelected() const { return call<"isSelected", bool>(); }
    void setSelected(bool selected, bool animated) const { call<"setSelected:animated:">(selected, animated); }
    bool isHighlighted() const { return call<"isHighlighted", bool>(); }
    void setHighlighted(bool highlighted, bool animated) const
    {
        call<"setHighlighted:animated:">(highlighted, animated);
    }
};

} // namespace platform
