#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

enum class StackAxis : long { Horizontal = 0, Vertical = 1 };
enum class StackAlignment : long { Fill = 0, Leading = 1, Center = 3, Trailing = 4 };
enum class StackDistribution : long { Fill = 0, FillEqually = 1, FillProportionally = 2, EqualSpacing = 3 };

/// Views in a row or a column.
class StackViewObject : public ViewObject {
public:
    StackAxis axis = StackAxis::Horizontal;
    StackAlignment alignment = StackAlignment::Fill;
    StackDistribution distribution = StackDistribution::Fill;
    double spacing = 0;
    UIEdgeInsets layoutMargins {};
    bool layoutMarginsRelativeArrangement = false;
    std::vector<Ref<ViewObject>> arranged {};

    id initWithArrangedSubviews(const id& views)
    {
        const id self = send<"initWithFrame:">(id(this), CGRectZero);
        for (const id& view : itemsOf(views))
            send<"addArrangedSubview:", void>(self, view);
        return self;
    }

    void insertArrangedSubview(const id& view, NSUInteger index)
    {
        const Ref<ViewObject> added(asViewObject(view));
        if (!added)
            return;
        std::erase(arranged, added);
        arranged.insert(
            arranged.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(index, arranged.size())), added);
        added->translatesAutoresizingMaskIntoConstraints = false;
        send<"addSubview:", void>(id(this), view);
        changed();
    }

    void addArrangedSubview(const id& view) { insertArrangedSubview(view, arranged.size()); }

    void removeArrangedSubview(const id& view)
    {
        if (std::erase_if(arranged, [&](const Ref<ViewObject>& present) { return id(present) == view; }) > 0)
            changed();
    }

    void willRemoveSubview(const id& view) { removeArrangedSubview(view); }

    id arrangedSubviews() const { return array({ arranged.begin(), arranged.end() }); }

    void setAxis(long newAxis) { change(axis, static_cast<StackAxis>(newAxis)); }
    void setAlignment(long newAlignment) { change(alignment, static_cast<StackAlignment>(newAlignment)); }
    void setDistribution(long newDistribution)
    {
        change(distribution, static_cast<StackDistribution>(newDistribution));
    }
    void setSpacing(double newSpacing) { change(spacing, newSpacing); }
    void setLayoutMargins(UIEdgeInsets margins) { change(layoutMargins, margins); }
    void setRelative(bool relative) { change(layoutMarginsRelativeArrangement, relative); }

    bool constrainsSubview(const ViewObject& view) const noexcept override
    {
        return std::ranges::none_of(arranged, [&](const Ref<ViewObject>& item) { return item.get() == &view; });
    }

    CGSize intrinsicContentSize() const override { return sizeThatFits({ unlimitedWidth, unlimitedWidth }); }

    CGSize sizeThatFits(CGSize available) const override
    {
        const UIEdgeInsets margins = activeMargins();
        const double width = available.width - margins.left - margins.right;
        double length = 0;
        double breadth = 0;
        std::size_t count = 0;
        for (const Ref<ViewObject>& view : arranged) {
            if (view->hidden)
                continue;
            const CGSize size = fittingSize(*view, width);
            length += along(size);
            breadth = std::max(breadth, across(size));
            ++count;
        }
        length += count > 1 ? spacing * static_cast<double>(count - 1) : 0;
        const CGSize content = horizontal() ? CGSize { length, breadth } : CGSize { breadth, length };
        return { content.width + margins.left + margins.right, content.height + margins.top + margins.bottom };
    }

    void layoutSubviews()
    {
        const CGRect box = UIEdgeInsetsInsetRect(bounds, activeMargins());
        std::vector<ViewObject*> views;
        for (const Ref<ViewObject>& view : arranged)
            if (!view->hidden)
                views.push_back(view.get());
        if (views.empty())
            return;
        std::vector<CGSize> sizes;
        double length = 0;
        for (ViewObject* const view : views) {
            sizes.push_back(fittingSize(*view, box.size.width));
            length += along(sizes.back());
        }
        const double gaps = static_cast<double>(views.size() - 1);
        const double room = along(box.size) - spacing * gaps;
        double gap = spacing;
        std::vector<double> lengths;
        for (const CGSize& size : sizes)
            lengths.push_back(along(size));
        if (distribution == StackDistribution::FillEqually)
            std::ranges::fill(lengths, room / static_cast<double>(views.size()));
        else if (distribution == StackDistribution::FillProportionally && length > 0)
            std::ranges::transform(lengths, lengths.begin(), [&](double part) { return part * room / length; });
        else if (distribution == StackDistribution::EqualSpacing && gaps > 0)
            gap = spacing + std::max(room - length, 0.0) / gaps;
        else
            give(room - length, views, lengths);

        double position = horizontal() ? box.origin.x : box.origin.y;
        for (std::size_t index = 0; index < views.size(); ++index) {
            const double extent = std::max(lengths[index], 0.0);
            const double breadth = alignment == StackAlignment::Fill ? across(box.size)
                                                                     : std::min(across(sizes[index]), across(box.size));
            const double free = across(box.size) - breadth;
            double side = horizontal() ? box.origin.y : box.origin.x;
            if (alignment == StackAlignment::Center)
                side += free / 2;
            else if (alignment == StackAlignment::Trailing)
                side += free;
            place(*views[index],
                horizontal() ? CGRectMake(position, side, extent, breadth)
                             : CGRectMake(side, position, breadth, extent));
            position += extent + gap;
        }
    }

private:
    bool horizontal() const noexcept { return axis == StackAxis::Horizontal; }
    double along(CGSize size) const noexcept { return horizontal() ? size.width : size.height; }
    double across(CGSize size) const noexcept { return horizontal() ? size.height : size.width; }
    UIEdgeInsets activeMargins() const { return layoutMarginsRelativeArrangement ? layoutMargins : UIEdgeInsetsZero; }

    /// What is over goes to the view that hugs its content least, the first of equals; what is missing is taken from
    /// the longest.
    void give(double over, const std::vector<ViewObject*>& views, std::vector<double>& lengths) const
    {
        const auto hugging
            = [&](const ViewObject* view) { return horizontal() ? view->horizontalHugging : view->verticalHugging; };
        if (over >= 0) {
            const auto loosest = std::ranges::min_element(views, {}, [&](const ViewObject* view) {
                // Who has a length of its own keeps it.
                const bool fixed = dynamic_cast<const StackViewObject*>(view) == nullptr && !hasText(*view);
                return hugging(view) + (fixed ? 1000.0F : 0.0F);
            });
            lengths[static_cast<std::size_t>(loosest - views.begin())] += over;
            return;
        }
        const auto longest = std::ranges::max_element(lengths);
        *longest = std::max(*longest + over, 0.0);
    }

    static bool hasText(const ViewObject& view) { return view.shownText().has_value(); }

    template <class T> void change(T& field, T value)
    {
        if (std::exchange(field, value) != value)
            changed();
    }

    void changed() { send<"invalidateIntrinsicContentSize", void>(id(this)); }
};

constexpr MethodDefinition methods[] {
    method<"addArrangedSubview:", &StackViewObject::addArrangedSubview>(),
    getter<"alignment", &StackViewObject::alignment>(),
    method<"arrangedSubviews", &StackViewObject::arrangedSubviews>(),
    getter<"axis", &StackViewObject::axis>(),
    getter<"distribution", &StackViewObject::distribution>(),
    method<"initWithArrangedSubviews:", &StackViewObject::initWithArrangedSubviews>(),
    method<"insertArrangedSubview:atIndex:", &StackViewObject::insertArrangedSubview>(),
    getter<"isLayoutMarginsRelativeArrangement", &StackViewObject::layoutMarginsRelativeArrangement>(),
    getter<"layoutMargins", &StackViewObject::layoutMargins>(),
    method<"layoutSubviews", &StackViewObject::layoutSubviews>(),
    method<"removeArrangedSubview:", &StackViewObject::removeArrangedSubview>(),
    method<"setAlignment:", &StackViewObject::setAlignment>(),
    method<"setAxis:", &StackViewObject::setAxis>(),
    method<"setDistribution:", &StackViewObject::setDistribution>(),
    method<"setLayoutMargins:", &StackViewObject::setLayoutMargins>(),
    method<"setLayoutMarginsRelativeArrangement:", &StackViewObject::setRelative>(),
    method<"setSpacing:", &StackViewObject::setSpacing>(),
    getter<"spacing", &StackViewObject::spacing>(),
    method<"willRemoveSubview:", &StackViewObject::willRemoveSubview>(),
};

} // namespace

const ClassDefinition UIStackView_class { .name = "UIStackView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<StackViewObject>,
    .methods = methods };

} // namespace platform
