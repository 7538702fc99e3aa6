#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/constraints.h"

namespace platform {

LayoutConstraintObject::~LayoutConstraintObject() = default;

namespace {

ViewObject* commonAncestor(ViewObject* left, ViewObject* right)
{
    if (!right)
        return left;
    for (ViewObject* view = left; view; view = view->superview)
        if (right->isDescendantOf(*view))
            return view;
    return nullptr;
}

LayoutConstraintObject& constraintIn(const id& self)
{
    return static_cast<LayoutConstraintObject&>(*self);
}

id makeConstraint(const id&, SEL, const id& first, NSInteger firstAttribute, NSInteger relation, const id& second,
    NSInteger secondAttribute, double multiplier, double constant)
{
    const Ref<LayoutConstraintObject> constraint = make<LayoutConstraintObject>();
    constraint->first = Ref<ViewObject>(asViewObject(first));
    constraint->firstAttribute = static_cast<LayoutAttribute>(firstAttribute);
    constraint->relation = static_cast<LayoutRelation>(relation);
    constraint->second = Ref<ViewObject>(asViewObject(second));
    constraint->secondAttribute = second ? static_cast<LayoutAttribute>(secondAttribute) : LayoutAttribute::None;
    constraint->multiplier = multiplier;
    constraint->constant = constant;
    return constraint;
}

template <bool Active> void setAllActive(const id&, SEL, const id& constraints)
{
    for (const id& constraint : itemsOf(constraints))
        send<"setActive:", void>(constraint, Active);
}

bool isActive(const id& self, SEL)
{
    return constraintIn(self).owner.get() != nil;
}

id firstItem(const id& self, SEL)
{
    return constraintIn(self).first;
}

id secondItem(const id& self, SEL)
{
    return constraintIn(self).second;
}

constexpr MethodDefinition methods[] {
    classMethod<"activateConstraints:", &setAllActive<true>>(),
    getter<"constant", &LayoutConstraintObject::constant>(),
    classMethod<"constraintWithItem:attribute:relatedBy:toItem:attribute:multiplier:constant:", &makeConstraint>(),
    classMethod<"deactivateConstraints:", &setAllActive<false>>(),
    getter<"firstAttribute", &LayoutConstraintObject::firstAttribute>(),
    method<"firstItem", &firstItem>(),
    method<"isActive", &isActive>(),
    getter<"priority", &LayoutConstraintObject::priority>(),
    getter<"secondAttribute", &LayoutConstraintObject::secondAttribute>(),
    method<"secondItem", &secondItem>(),
    method<"setActive:", &LayoutConstraintObject::setActive>(),
    method<"setConstant:", &LayoutConstraintObject::setConstant>(),
    method<"setPriority:", &LayoutConstraintObject::setPriority>(),
};

} // namespace

const ClassDefinition LayoutConstraintObject::definition {
    .name = "NSLayoutConstraint", .allocate = allocate<LayoutConstraintObject>, .methods = methods
};

void LayoutConstraintObject::setActive(bool active)
{
    const Ref<ViewObject> present = owner;
    if (active == static_cast<bool>(present))
        return;
    const id self(this);
    if (!active) {
        owner = {};
        present->setNeedsLayout();
        send<"removeObject:", void>(present->constraints, self);
        return;
    }
    const Ref<ViewObject> from = first;
    const Ref<ViewObject> to = second;
    if (!from || (!to && secondAttribute != LayoutAttribute::None))
        return;
    const Ref<ViewObject> ancestor(commonAncestor(from.get(), to.get()));
    if (!ancestor)
        throw NSException("NSGenericException", "a constraint can't be activated between views of two trees");
    if (!ancestor->constraints)
        ancestor->constraints = mutableArray();
    owner = ancestor;
    send<"addObject:", void>(ancestor->constraints, self);
    ancestor->setNeedsLayout();
}

void LayoutConstraintObject::setConstant(double newConstant)
{
    change(constant, newConstant);
}

void LayoutConstraintObject::setPriority(float newPriority)
{
    change(priority, newPriority);
}

template <class T> void LayoutConstraintObject::change(T& field, T value)
{
    if (std::exchange(field, value) == value)
        return;
    if (const Ref<ViewObject> present = owner)
        present->setNeedsLayout();
}

namespace {

/// One edge, centre or side of a view.
class LayoutAnchorObject : public NSObject {
public:
    ViewObject* view = nullptr;
    id keepsView {};
    LayoutAttribute attribute = LayoutAttribute::None;
};

template <LayoutAttribute Attribute> id anchor(const id& self, SEL)
{
    id made = send<"new">(id(classNamed<"NSLayoutAnchor">()));
    auto& fields = static_cast<LayoutAnchorObject&>(*made);
    fields.view = asViewObject(self);
    fields.keepsView = self;
    fields.attribute = Attribute;
    return made;
}

id constraintTo(const id& self, LayoutRelation relation, const id& other, double multiplier, double constant)
{
    const auto& from = static_cast<const LayoutAnchorObject&>(*self);
    const auto* const to = as<LayoutAnchorObject>(other);
    return makeConstraint(nil, nullptr, id(from.view), static_cast<long>(from.attribute), static_cast<long>(relation),
        to ? id(to->view) : nil, static_cast<long>(to ? to->attribute : LayoutAttribute::None), multiplier, constant);
}

template <LayoutRelation Relation> id toAnchor(const id& self, SEL, const id& other)
{
    return constraintTo(self, Relation, other, 1, 0);
}

template <LayoutRelation Relation> id toAnchorPlus(const id& self, SEL, const id& other, double constant)
{
    return constraintTo(self, Relation, other, 1, constant);
}

template <LayoutRelation Relation> id toAnchorTimes(const id& self, SEL, const id& other, double multiplier)
{
    return constraintTo(self, Relation, other, multiplier, 0);
}

template <LayoutRelation Relation>
id toAnchorTimesPlus(const id& self, SEL, const id& other, double multiplier, double constant)
{
    return constraintTo(self, Relation, other, multiplier, constant);
}

template <LayoutRelation Relation> id toConstant(const id& self, SEL, double constant)
{
    return constraintTo(self, Relation, nil, 1, constant);
}

using enum LayoutRelation;

constexpr MethodDefinition anchorRows[] {
    method<"constraintEqualToAnchor:", &toAnchor<Equal>>(),
    method<"constraintEqualToAnchor:constant:", &toAnchorPlus<Equal>>(),
    method<"constraintEqualToAnchor:multiplier:", &toAnchorTimes<Equal>>(),
    method<"constraintEqualToAnchor:multiplier:constant:", &toAnchorTimesPlus<Equal>>(),
    method<"constraintEqualToConstant:", &toConstant<Equal>>(),
    method<"constraintGreaterThanOrEqualToAnchor:", &toAnchor<GreaterThanOrEqual>>(),
    method<"constraintGreaterThanOrEqualToAnchor:constant:", &toAnchorPlus<GreaterThanOrEqual>>(),
    method<"constraintGreaterThanOrEqualToConstant:", &toConstant<GreaterThanOrEqual>>(),
    method<"constraintLessThanOrEqualToAnchor:", &toAnchor<LessThanOrEqual>>(),
    method<"constraintLessThanOrEqualToAnchor:constant:", &toAnchorPlus<LessThanOrEqual>>(),
    method<"constraintLessThanOrEqualToConstant:", &toConstant<LessThanOrEqual>>(),
};

void addConstraint(const id&, SEL, const id& constraint)
{
    send<"setActive:", void>(constraint, true);
}

void removeConstraint(const id&, SEL, const id& constraint)
{
    send<"setActive:", void>(constraint, false);
}

id constraints(const id& self, SEL)
{
    const ArrayValue items = itemsOf(static_cast<ViewObject&>(*self).constraints);
    return array({ items.begin(), items.end() });
}

template <bool Active> void setEachActive(const id& self, SEL cmd, const id& list)
{
    setAllActive<Active>(self, cmd, list);
}

constexpr MethodDefinition viewRows[] {
    method<"addConstraint:", &addConstraint>(),
    method<"addConstraints:", &setEachActive<true>>(),
    method<"bottomAnchor", &anchor<LayoutAttribute::Bottom>>(),
    method<"centerXAnchor", &anchor<LayoutAttribute::CenterX>>(),
    method<"centerYAnchor", &anchor<LayoutAttribute::CenterY>>(),
    method<"constraints", &constraints>(),
    method<"heightAnchor", &anchor<LayoutAttribute::Height>>(),
    method<"leadingAnchor", &anchor<LayoutAttribute::Leading>>(),
    method<"leftAnchor", &anchor<LayoutAttribute::Left>>(),
    method<"removeConstraint:", &removeConstraint>(),
    method<"removeConstraints:", &setEachActive<false>>(),
    method<"rightAnchor", &anchor<LayoutAttribute::Right>>(),
    method<"topAnchor", &anchor<LayoutAttribute::Top>>(),
    method<"trailingAnchor", &anchor<LayoutAttribute::Trailing>>(),
    method<"widthAnchor", &anchor<LayoutAttribute::Width>>(),
};

} // namespace

constinit const std::span<const MethodDefinition> constraintMethods { viewRows };
const ClassDefinition NSLayoutAnchor_class {
    .name = "NSLayoutAnchor", .allocate = allocate<LayoutAnchorObject>, .methods = anchorRows
};

} // namespace platform
