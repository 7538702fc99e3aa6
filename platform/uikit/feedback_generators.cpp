#include "platform/uikit/feedback_generators.h"

#include "platform/screen/feedback.h"

namespace platform {

namespace {

void prepare(const id&, SEL) { }

id initWithStyle(const id& self, SEL, NSInteger)
{
    return self;
}

void impactOccurred(const id&, SEL)
{
    giveFeedback("impact");
}

void impactOccurredWithIntensity(const id&, SEL, double)
{
    giveFeedback("impact");
}

constexpr MethodDefinition impactMethods[] {
    method<"impactOccurred", &impactOccurred>(),
    method<"impactOccurredWithIntensity:", &impactOccurredWithIntensity>().since(13),
    method<"initWithStyle:", &initWithStyle>(),
    method<"prepare", &prepare>(),
};

void notificationOccurred(const id&, SEL, NSInteger type)
{
    enum : NSInteger { Success = 0, Warning = 1 };
    giveFeedback(type == Success ? "success" : type == Warning ? "warning" : "error");
}

constexpr MethodDefinition notificationMethods[] {
    method<"notificationOccurred:", &notificationOccurred>(),
    method<"prepare", &prepare>(),
};

void selectionChanged(const id&, SEL)
{
    giveFeedback("selection");
}

constexpr MethodDefinition selectionMethods[] {
    method<"prepare", &prepare>(),
    method<"selectionChanged", &selectionChanged>(),
};

} // namespace

const ClassDefinition UIImpactFeedbackGenerator_class { .name = "UIImpactFeedbackGenerator", .methods = impactMethods };
const ClassDefinition UINotificationFeedbackGenerator_class { .name = "UINotificationFeedbackGenerator",
    .methods = notificationMethods };
const ClassDefinition UISelectionFeedbackGenerator_class { .name = "UISelectionFeedbackGenerator",
    .methods = selectionMethods };

} // namespace platform
