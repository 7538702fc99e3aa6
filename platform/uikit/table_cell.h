#pragma once

#include "platform/uikit/view.h"

namespace platform {

/// By the system's numbers.
enum class TableStyle : long { Plain = 0, Grouped = 1, InsetGrouped = 2 };
enum class CellStyle : long { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class CellAccessory : long { None = 0, Disclosure = 1, DetailDisclosure = 2, Checkmark = 3, Detail = 4 };
enum class CellSelectionStyle : long { None = 0, Blue = 1, Gray = 2, Default = 3 };

/// What a row's place in its table says of its look.
struct CellPlace {
    TableStyle style = TableStyle::Plain;
    bool isFirst = true; ///< of its section
    bool isLast = true;
    bool hasSeparator = true;
    id separatorColor {}; ///< nil: the system's
    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

class TableCellObject : public ViewObject {
public:
    static const ClassDefinition definition;

    id reuseIdentifier {};
    NSInteger indentationLevel = 0;
    double indentationWidth = 10;

    id initWithStyle(NSInteger style, const id& identifier);
    id contentView();
    id textLabel();
    id detailTextLabel();
    id imageView();

    CellSelectionStyle selectionStyle = CellSelectionStyle::Default;
    CellAccessory accessoryType() const noexcept { return accessoryType_; }
    void setAccessoryType(NSInteger type);
    id accessoryView() const { return id(accessoryView_); }
    void setAccessoryView(const id& view);
    id backgroundView() const { return id(backgroundView_); }
    void setBackgroundView(const id& view);
    id selectedBackgroundView() const { return id(selectedBackgroundView_); }
    void setSelectedBackgroundView(const id& view);
    UIEdgeInsets separatorInset() const;
    void setSeparatorInset(UIEdgeInsets inset);

    bool isSelected() const noexcept { return selected_; }
    bool isHighlighted() const noexcept { return highlighted_; }
    void setSelected(bool selected, bool animated);
    void setHighlighted(bool highlighted, bool animated);

    void prepareForReuse();
    void layoutSubviews();
    void setPlace(const CellPlace& place);
    /// Of those that it makes itself, which it also places.
    bool isOwnPart(const ViewObject& view) const noexcept;
    void placeLabels();

    CGSize sizeThatFits(CGSize size) const override;
    bool constrainsSubview(const ViewObject& view) const noexcept override;
    void drawContent(Canvas& canvas, const CGRect& seen) const override;

private:
    Ref<ViewObject> makeLabel(double fontSize);
    void showPressed(bool animated);
    double accessoryWidth() const;

    CellStyle style_ = CellStyle::Default;
    CellPlace place_ {};
    CellAccessory accessoryType_ = CellAccessory::None;
    bool selected_ = false;
    bool highlighted_ = false;
    bool hasSeparatorInset_ = false;
    UIEdgeInsets separatorInset_ {};
    Ref<ViewObject> contentView_ {};
    Ref<ViewObject> text_ {};
    Ref<ViewObject> detail_ {};
    Ref<ViewObject> image_ {};
    Ref<ViewObject> accessoryView_ {};
    Ref<ViewObject> accessory_ {}; ///< of the type, drawn by the system
    Ref<ViewObject> backgroundView_ {};
    Ref<ViewObject> selectedBackgroundView_ {};
    Ref<ViewObject> pressed_ {}; ///< the colour of a row under a finger, unless a view stands for it
};

/// A header or a footer of a section, with a title unless a class makes something else of it.
class TableSectionViewObject : public ViewObject {
public:
    static const ClassDefinition definition;

    id reuseIdentifier {};

    id initWithReuseIdentifier(const id& identifier);
    id contentView();
    id textLabel();
    id detailTextLabel();
    id backgroundView() const { return id(backgroundView_); }
    void setBackgroundView(const id& view);

    void prepareForReuse() { }
    void layoutSubviews();
    void setPlace(TableStyle style, bool isFooter);
    /// As the table has it, and the style says.
    void setTitle(const id& title);

    CGSize sizeThatFits(CGSize size) const override;
    void drawContent(Canvas& canvas, const CGRect& seen) const override;

private:
    Ref<ViewObject> contentView_ {};
    Ref<ViewObject> text_ {};
    Ref<ViewObject> detail_ {};
    Ref<ViewObject> backgroundView_ {};
    TableStyle style_ = TableStyle::Plain;
    bool isFooter_ = false;
};

/// From the sides of a table to what stands in its rows, and to the rows of a table whose groups are inset.
inline constexpr double tableMargin = 16;

} // namespace platform
