#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/constraints.h"

#include <algorithm>
#include <map>
#include <vector>

/// Each axis by itself: a view has a position and a size there, every constraint is an equation between such unknowns,
/// and the equations are taken in by their priority. One that says nothing new is passed over, and so is one that
/// contradicts those before it. An inequality counts only where the solution breaks it; then as an equation.

namespace platform {

namespace {

enum class Axis { Horizontal, Vertical };

/// A sum of unknowns, each with its factor, that is 0 together with the constant.
struct Equation {
    std::map<std::size_t, double> factors;
    double constant = 0;

    void add(const Equation& other, double times)
    {
        for (const auto& [unknown, factor] : other.factors)
            if (double& sum = factors[unknown]; std::abs(sum += factor * times) < negligible)
                factors.erase(unknown);
        constant += other.constant * times;
    }

    static constexpr double negligible = 1e-9;
};

/// Equations that each name one unknown by the others.
class EquationSystem {
public:
    /// False when it follows from what is there, or contradicts it.
    bool take(Equation equation)
    {
        reduce(equation);
        if (equation.factors.empty())
            return false;
        const auto [pivot, factor]
            = *std::ranges::max_element(equation.factors, {}, [](const auto& entry) { return std::abs(entry.second); });
        Equation solved;
        solved.add(equation, 1 / factor);
        for (auto& [unknown, row] : rows_)
            if (const auto found = row.factors.find(pivot); found != row.factors.end())
                row.add(solved, -found->second);
        rows_.emplace(pivot, std::move(solved));
        return true;
    }

    /// Unknowns that nothing says count as 0.
    double value(const Equation& expression) const
    {
        Equation reduced = expression;
        reduce(reduced);
        return reduced.constant;
    }

private:
    void reduce(Equation& equation) const
    {
        const auto named = equation.factors;
        for (const auto& [unknown, factor] : named)
            if (const auto row = rows_.find(unknown); row != rows_.end())
                equation.add(row->second, -factor);
    }

    std::map<std::size_t, Equation> rows_;
};

bool isHorizontal(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::Left:
    case LayoutAttribute::Right:
    case LayoutAttribute::Leading:
    case LayoutAttribute::Trailing:
    case LayoutAttribute::Width:
    case LayoutAttribute::CenterX:
        return true;
    default:
        return false;
    }
}

bool isSize(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::Width || attribute == LayoutAttribute::Height;
}

/// How far along the size an attribute lies: 0 at the start, 1 at the end.
double shareOfSize(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::Right:
    case LayoutAttribute::Trailing:
    case LayoutAttribute::Bottom:
    case LayoutAttribute::LastBaseline:
        return 1;
    case LayoutAttribute::CenterX:
    case LayoutAttribute::CenterY:
        return 0.5;
    default:
        return 0;
    }
}

struct Demand {
    Equation equation;
    LayoutRelation relation;
    float priority;
};

class AxisSolver {
public:
    AxisSolver(ViewObject& root, Axis axis)
        : root_(root)
        , axis_(axis)
    {
        number(root);
        for (ViewObject* const view : views_)
            describe(*view);
    }

    void solve()
    {
        std::ranges::stable_sort(demands_, std::greater {}, &Demand::priority);
        std::vector<bool> tight(demands_.size());
        // Each round makes at least one broken inequality tight; they are few.
        for (std::size_t round = 0; round <= demands_.size(); ++round) {
            system_ = {};
            for (std::size_t index = 0; index < demands_.size(); ++index)
                if (demands_[index].relation == LayoutRelation::Equal || tight[index])
                    system_.take(demands_[index].equation);
            const auto broken = firstBroken(tight);
            if (!broken)
                break;
            tight[*broken] = true;
        }
    }

    /// The frame along this axis, in the superview's coordinates: position and size.
    std::pair<double, double> placeOf(const ViewObject& view) const
    {
        const ViewObject& superview = *view.superview;
        const double origin = system_.value(positionOf(superview)) - boundsOrigin(superview);
        return { system_.value(positionOf(view)) - origin, system_.value(sizeOf(view)) };
    }

    const std::vector<ViewObject*>& views() const noexcept { return views_; }

private:
    static constexpr float strongest = 2000;
    static constexpr float weakest = 1;

    void number(ViewObject& view)
    {
        indices_[&view] = views_.size();
        views_.push_back(&view);
        for (const Ref<ViewObject>& subview : view.subviews)
            number(*subview);
    }

    Equation positionOf(const ViewObject& view) const { return { { { 2 * indices_.at(&view), 1.0 } } }; }
    Equation sizeOf(const ViewObject& view) const { return { { { 2 * indices_.at(&view) + 1, 1.0 } } }; }

    double boundsOrigin(const ViewObject& view) const
    {
        return axis_ == Axis::Horizontal ? view.bounds.origin.x : view.bounds.origin.y;
    }

    void demand(Equation equation, float priority, LayoutRelation relation = LayoutRelation::Equal)
    {
        demands_.push_back({ std::move(equation), relation, priority });
    }

    void demandValue(Equation equation, double value, float priority)
    {
        equation.constant = -value;
        demand(std::move(equation), priority);
    }

    void describe(ViewObject& view)
    {
        const bool horizontal = axis_ == Axis::Horizontal;
        const CGRect box { { view.center.x - view.bounds.size.width / 2, view.center.y - view.bounds.size.height / 2 },
            view.bounds.size };
        const double size = horizontal ? box.size.width : box.size.height;
        if (&view == &root_) {
            demandValue(positionOf(view), 0, strongest);
            demandValue(sizeOf(view), size, strongest);
        } else {
            Equation position = positionOf(view);
            position.add(positionOf(*view.superview), -1);
            const double place = (horizontal ? box.origin.x : box.origin.y) - boundsOrigin(*view.superview);
            const bool placedByItself
                = view.translatesAutoresizingMaskIntoConstraints || !view.superview->constrainsSubview(view);
            demandValue(std::move(position), placedByItself ? place : 0, placedByItself ? strongest : weakest);
            if (placedByItself) {
                demandValue(sizeOf(view), size, strongest);
            } else {
                const CGSize natural = send<"intrinsicContentSize", CGSize>(id(&view));
                const double content = horizontal ? natural.width : natural.height;
                if (content >= 0) {
                    // It would rather not be cut off than not be stretched.
                    constexpr float resistance = 750;
                    Equation least = sizeOf(view);
                    least.constant = -content;
                    demand(least, resistance, LayoutRelation::GreaterThanOrEqual);
                    demandValue(sizeOf(view), content, horizontal ? view.horizontalHugging : view.verticalHugging);
                }
                demandValue(sizeOf(view), 0, weakest);
            }
        }
        for (const id& item : itemsOf(view.constraints))
            addConstraint(static_cast<const LayoutConstraintObject&>(*item));
    }

    Equation expression(const ViewObject& view, LayoutAttribute attribute) const
    {
        if (isSize(attribute))
            return sizeOf(view);
        Equation sum = positionOf(view);
        if (const double share = shareOfSize(attribute); share > 0)
            sum.add(sizeOf(view), share);
        return sum;
    }

    void addConstraint(const LayoutConstraintObject& constraint)
    {
        const Ref<ViewObject> first = constraint.first;
        if (isHorizontal(constraint.firstAttribute) != (axis_ == Axis::Horizontal) || !indices_.contains(first.get()))
            return;
        Equation equation = expression(*first, constraint.firstAttribute);
        if (constraint.secondAttribute != LayoutAttribute::None) {
            const Ref<ViewObject> second = constraint.second;
            if (isHorizontal(constraint.secondAttribute) != (axis_ == Axis::Horizontal)
                || !indices_.contains(second.get()))
                return;
            equation.add(expression(*second, constraint.secondAttribute), -constraint.multiplier);
        }
        equation.constant -= constraint.constant;
        demand(std::move(equation), constraint.priority, constraint.relation);
    }

    std::optional<std::size_t> firstBroken(const std::vector<bool>& tight) const
    {
        constexpr double tolerance = 1e-6;
        for (std::size_t index = 0; index < demands_.size(); ++index) {
            const Demand& wanted = demands_[index];
            if (tight[index] || wanted.relation == LayoutRelation::Equal)
                continue;
            const double value = system_.value(wanted.equation);
            if (wanted.relation == LayoutRelation::GreaterThanOrEqual ? value < -tolerance : value > tolerance)
                return index;
        }
        return std::nullopt;
    }

    ViewObject& root_;
    const Axis axis_;
    std::map<const ViewObject*, std::size_t> indices_;
    std::vector<ViewObject*> views_;
    std::vector<Demand> demands_;
    EquationSystem system_;
};

bool hasConstraints(const ViewObject& view)
{
    if (!itemsOf(view.constraints).empty())
        return true;
    return std::ranges::any_of(view.subviews, [](const Ref<ViewObject>& subview) { return hasConstraints(*subview); });
}

/// A constraint of the view alone that fixes one of its sides; empty for none.
std::optional<double> ownConstant(const ViewObject& view, LayoutAttribute attribute)
{
    for (const id& item : itemsOf(view.constraints)) {
        const auto& constraint = static_cast<const LayoutConstraintObject&>(*item);
        if (constraint.first.get().get() == &view && constraint.secondAttribute == LayoutAttribute::None
            && constraint.firstAttribute == attribute && constraint.relation == LayoutRelation::Equal)
            return constraint.constant;
    }
    return std::nullopt;
}

} // namespace

bool hasFixedSize(const ViewObject& view)
{
    return ownConstant(view, LayoutAttribute::Width) && ownConstant(view, LayoutAttribute::Height);
}

bool constrainsInside(const ViewObject& ancestor, const ViewObject& view)
{
    const auto inside
        = [&](const Ref<ViewObject>& end) { return end && end.get() != &view && end->isDescendantOf(view); };
    return std::ranges::any_of(itemsOf(ancestor.constraints), [&](const id& item) {
        const auto& constraint = static_cast<const LayoutConstraintObject&>(*item);
        return inside(constraint.first) || inside(constraint.second);
    });
}

void solveConstraints(ViewObject& view)
{
    if (!hasConstraints(view))
        return;
    AxisSolver horizontal(view, Axis::Horizontal);
    AxisSolver vertical(view, Axis::Vertical);
    horizontal.solve();
    vertical.solve();
    for (ViewObject* const placed : horizontal.views()) {
        if (placed == &view || placed->translatesAutoresizingMaskIntoConstraints
            || !placed->superview->constrainsSubview(*placed))
            continue;
        const auto [x, width] = horizontal.placeOf(*placed);
        const auto [y, height] = vertical.placeOf(*placed);
        CGRect bounds = placed->bounds;
        bounds.size = { std::max(width, 0.0), std::max(height, 0.0) };
        place(*placed, bounds, { x + bounds.size.width / 2, y + bounds.size.height / 2 });
    }
}

CGSize fittingSize(ViewObject& view, double width)
{
    CGSize size = send<"intrinsicContentSize", CGSize>(id(&view));
    if (size.width < 0 && size.height < 0 && view.translatesAutoresizingMaskIntoConstraints && !hasConstraints(view))
        size = view.bounds.size;
    if (const auto fixed = ownConstant(view, LayoutAttribute::Width))
        size.width = *fixed;
    if (size.width > width)
        size = send<"sizeThatFits:", CGSize>(id(&view), CGSize { width, unlimitedWidth });
    if (const auto fixed = ownConstant(view, LayoutAttribute::Height))
        size.height = *fixed;
    return { std::max(size.width, 0.0), std::max(size.height, 0.0) };
}

void dropConstraintsAcross(ViewObject& view)
{
    for (ViewObject* ancestor = view.superview; ancestor; ancestor = ancestor->superview) {
        const ArrayValue present = itemsOf(ancestor->constraints);
        const std::vector<id> items(present.begin(), present.end());
        for (const id& item : items) {
            auto& constraint = static_cast<LayoutConstraintObject&>(*item);
            const auto inside = [&](const Ref<ViewObject>& end) { return end && end->isDescendantOf(view); };
            if (inside(constraint.first) || inside(constraint.second))
                constraint.setActive(false);
        }
    }
}

} // namespace platform
