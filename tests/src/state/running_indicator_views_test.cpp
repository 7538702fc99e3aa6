#include "core/policies.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "state/running_indicator_hooks.h"
#include "support/view_test.h"

// What the indicator reads of icon views, which tell their label, their image and their font in several ways. The
// system's classes are fakes here: a version has one of the ways, and never two that disagree.

using namespace platform;

namespace {

struct Fields {
    id icon {};
    id label {};
    id underscoredLabel {};
    id image {};
    id underscoredImage {};
    id location {};
};

void layoutSubviews(const id&, SEL) { }

constexpr MethodDefinition iconViewMethods[] {
    getter<"icon", &Fields::icon>(),
    method<"layoutSubviews", &layoutSubviews>(),
    getter<"location", &Fields::location>(),
    setter<"setIcon:", &Fields::icon>(),
    setter<"setImage:", &Fields::image>(),
    setter<"setLabel:", &Fields::label>(),
    setter<"setLocation:", &Fields::location>(),
    setter<"setUnderscoredImage:", &Fields::underscoredImage>(),
    setter<"setUnderscoredLabel:", &Fields::underscoredLabel>(),
};
const ClassDefinition iconViewClass { .name = "SBIconView", .superclassName = "UIView", .methods = iconViewMethods };

constexpr MethodDefinition bothLabels[] { getter<"labelView", &Fields::label>(),
    getter<"_labelView", &Fields::underscoredLabel>() };
constexpr MethodDefinition underscoredLabel[] { getter<"_labelView", &Fields::underscoredLabel>() };
constexpr MethodDefinition bothImages[] { getter<"iconImageView", &Fields::image>(),
    getter<"_iconImageView", &Fields::underscoredImage>() };
constexpr MethodDefinition underscoredImage[] { getter<"_iconImageView", &Fields::underscoredImage>() };
constexpr InstanceVariableDefinition labelVariable[] { { "_labelView",
    [](const NSObject& object) { return fieldsOf<Fields>(id(const_cast<NSObject*>(&object))).underscoredLabel; },
    nullptr } };

constexpr ClassDefinition viewClasses[] {
    { .name = "BothLabels", .superclassName = "SBIconView", .methods = bothLabels },
    { .name = "UnderscoredLabel", .superclassName = "SBIconView", .methods = underscoredLabel },
    { .name = "LabelVariable", .superclassName = "SBIconView", .instanceVariables = labelVariable },
    { .name = "NoLabel", .superclassName = "SBIconView" },
    { .name = "BothImages", .superclassName = "SBIconView", .methods = bothImages },
    { .name = "UnderscoredImage", .superclassName = "SBIconView", .methods = underscoredImage },
    { .name = "NoImage", .superclassName = "SBIconView" },
};

/// An application that runs, its icon, and the controller and the manager who know both: one object.
id self_(const id& self, SEL)
{
    return self;
}
id shared()
{
    static NSObject* const object = send<"new">(id(objc_getClass("Everything"))).leak();
    return id(object);
}
id sharedInstance(const id&, SEL)
{
    return shared();
}
id applicationFor(const id& self, SEL, const id&)
{
    return self;
}
bool isRunning(const id&, SEL)
{
    return true;
}
id identifier(const id&, SEL)
{
    return string("a");
}
id name(const id&, SEL)
{
    return string("Notes");
}
constexpr MethodDefinition everythingMethods[] {
    method<"applicationBundleIdentifier", &identifier>(),
    method<"applicationWithBundleIdentifier:", &applicationFor>(),
    method<"displayName", &name>(),
    method<"isRunning", &isRunning>(),
    method<"processState", &self_>(),
};
const ClassDefinition everythingClass { .name = "Everything", .methods = everythingMethods };
constexpr MethodDefinition controllerMethods[] { classMethod<"sharedInstance", &sharedInstance>() };
const ClassDefinition controllerClass { .name = "SBApplicationController", .methods = controllerMethods };

/// A label that tells its font itself, or by its settings, or not at all.
struct LabelFields {
    id settings {};
    id font {};
};
constexpr MethodDefinition fontMethods[] { getter<"font", &LabelFields::font>(),
    setter<"setFont:", &LabelFields::font>() };
constexpr MethodDefinition settingsMethods[] { getter<"legibilitySettings", &LabelFields::settings>(),
    setter<"setSettings:", &LabelFields::settings>() };
constexpr MethodDefinition bothFontMethods[] { getter<"font", &LabelFields::font>(),
    getter<"legibilitySettings", &LabelFields::settings>(), setter<"setFont:", &LabelFields::font>(),
    setter<"setSettings:", &LabelFields::settings>() };
constexpr ClassDefinition labelClasses[] {
    { .name = "FontLabel", .superclassName = "UIView", .methods = bothFontMethods },
    { .name = "SettingsLabel", .superclassName = "UIView", .methods = settingsMethods },
    { .name = "PlainLabel", .superclassName = "UIView" },
    { .name = "Settings", .methods = fontMethods },
};

class RunningIndicatorViews : public support::ViewTest {
protected:
    RunningIndicatorViews()
    {
        registerClass(iconViewClass);
        for (const ClassDefinition& definition : viewClasses)
            registerClass(definition);
        for (const ClassDefinition& definition : labelClasses)
            registerClass(definition);
        registerClass(everythingClass);
        registerClass(controllerClass);
        appledger::installHookGroup(appledger::RunningIndicatorHooks);
        appledger::g_RunningIndicatorEnabled = true;
    }

    static id make(const char* className, const CGRect& frame)
    {
        return send<"initWithFrame:">(send<"alloc">(id(objc_getClass(className))), frame);
    }

    static id makeIconView(const char* className)
    {
        id view = make(className, { {}, { 60, 80 } });
        send<"setIcon:", void>(view, shared());
        return view;
    }

    /// Where the dot stands after a layout: "none", "hidden" or its centre.
    static std::string dotOf(const id& view)
    {
        send<"setNeedsLayout", void>(view);
        send<"layoutIfNeeded", void>(view);
        const id dot = send<"al_runningDot">(view);
        if (!dot)
            return "none";
        if (send<"isHidden", bool>(dot))
            return "hidden";
        const CGPoint center = send<"center", CGPoint>(dot);
        return std::to_string(static_cast<int>(center.x)) + " " + std::to_string(static_cast<int>(center.y));
    }

    static double widthOfName(double fontSize)
    {
        const id font = send<"systemFontOfSize:">(support::classObject<"UIFont">(), fontSize);
        const id attributes = dictionary(std::vector { std::pair { NSFontAttributeName(), font } });
        return send<"sizeWithAttributes:", CGSize>(string("Notes"), attributes).width;
    }
};

TEST_F(RunningIndicatorViews, TakeTheLabelFromTheFirstThatTellsIt)
{
    // The labels are narrower than any text: the dot stands 7 points beside their right edges.
    const id label = make("PlainLabel", { { 0, 10 }, { 2, 20 } });
    const id other = make("PlainLabel", { { 20, 10 }, { 2, 40 } });
    const std::pair<const char*, std::string> cases[] = { { "BothLabels", "9 20" }, { "UnderscoredLabel", "29 30" },
        { "LabelVariable", "29 30" }, { "NoLabel", "none" } };
    for (const auto& [className, expected] : cases) {
        const id view = makeIconView(className);
        send<"setLabel:", void>(view, label);
        send<"setUnderscoredLabel:", void>(view, other);
        EXPECT_EQ(dotOf(view), expected) << className;
    }
}

TEST_F(RunningIndicatorViews, TakeTheImageFromTheFirstThatTellsIt)
{
    const id image = make("UIView", { {}, { 60, 20 } });
    const id other = make("UIView", { {}, { 60, 40 } });
    const std::pair<const char*, std::string> cases[]
        = { { "BothImages", "30 29" }, { "UnderscoredImage", "30 49" }, { "NoImage", "30 86" } };
    for (const auto& [className, expected] : cases) {
        const id view = makeIconView(className);
        send<"setLocation:", void>(view, string("SBIconLocationDock"));
        send<"setImage:", void>(view, image);
        send<"setUnderscoredImage:", void>(view, other);
        EXPECT_EQ(dotOf(view), expected) << className;
    }
}

TEST_F(RunningIndicatorViews, MeasureTheNameInTheLabelsFontOrInThatOfItsSettingsOrInTheSystems)
{
    const id settings = send<"new">(id(objc_getClass("Settings")));
    const auto fontOfSize
        = [](double size) { return send<"systemFontOfSize:">(support::classObject<"UIFont">(), size); };
    send<"setFont:", void>(settings, fontOfSize(20.0));
    const std::pair<const char*, double> cases[]
        = { { "FontLabel", 30 }, { "SettingsLabel", 20 }, { "PlainLabel", 12 } };
    for (const auto& [className, size] : cases) {
        const id label = make(className, { {}, { 200, 20 } });
        ask<"setFont:", void>(label, fontOfSize(30.0));
        ask<"setSettings:", void>(label, settings);
        const id view = makeIconView("BothLabels");
        send<"setLabel:", void>(view, label);
        EXPECT_EQ(dotOf(view), std::to_string(static_cast<int>(100 + widthOfName(size) / 2 + 7)) + " 10") << className;
    }
}

} // namespace
