#include "core/hook_group.h"

#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

std::string journal;

void speak(const id&, SEL)
{
    journal += "stock ";
}
NSInteger family(const id&, SEL)
{
    return 7;
}

constexpr MethodDefinition methods[] { method<"speak", speak>(), classMethod<"family", family>() };
const ClassDefinition Target_class { .name = "Target", .methods = methods };

template <char Name> struct Speak : Hook<Speak<Name>, "Target", "speak", void()> {
    static void replacement(const id& self, SEL cmd)
    {
        journal += Name;
        Speak::original(self, cmd);
    }
};

struct Family : ClassHook<Family, "Target", "family", NSInteger()> {
    static NSInteger replacement(const id& self, SEL cmd) { return original(self, cmd) * 6; }
};

struct NobodysSpeak : Hook<NobodysSpeak, "AbsentClass", "speak", void()> {
    static void replacement(const id&, SEL) { }
};

struct NoMethod : Hook<NoMethod, "Target", "absentSelector", void()> {
    static void replacement(const id&, SEL) { }
};

template <Name ClassName> struct Shout : AddedMethod<Shout<ClassName>, ClassName, "shout", void()> {
    static void implementation(const id&, SEL) { }
};

struct Agree : AddedMethod<Agree, "Target", "agree:with:", bool(id, id)> {
    static bool implementation(const id&, SEL, const id&, const id&) { return true; }
};

// What doesn't compile: a hook that calls another's original, one that installs another's replacement, and one whose
// replacement has another signature.
template <class T>
concept ShowsOriginal = requires
{
    T::original;
};
template <class T>
concept HasRow = requires
{
    T::row();
};

struct Borrowed : Hook<NobodysSpeak, "Target", "speak", void()> { };
struct Mistyped : Hook<Mistyped, "Target", "speak", bool()> {
    static void replacement(const id&, SEL) { }
};
struct MistypedAddition : AddedMethod<MistypedAddition, "Target", "shout", void(id)> {
    static void implementation(const id&, SEL) { }
};

static_assert(HasRow<Family> && HasRow<Agree>);
static_assert(!ShowsOriginal<Family> && !HasRow<Borrowed> && !HasRow<Mistyped> && !HasRow<MistypedAddition>);

constexpr HookRow firstRows[] {
    Speak<'1'>::row(),
    NobodysSpeak::row(),
    NoMethod::row(),
    Family::row(),
    Shout<"Target">::row(),
    Shout<"AbsentClass">::row(),
    Agree::row(),
    AddedProperty<"Target", "al_dot", "@\"UIView\"">::row(),
    AddedProperty<"AbsentClass", "al_dot", "@\"UIView\"">::row(),
};
constexpr HookRow secondRows[] {
    Speak<'2'>::row(),
    AddedProperty<"Target", "al_other", "@\"UIView\"">::row(),
};

class HookGroups : public testing::Test {
protected:
    HookGroups()
    {
        target_ = registerClass(Target_class);
        installHookGroup({ "First", firstRows });
        installHookGroup({ "Second", secondRows });
    }

    std::string types(std::string_view selector) const
    {
        return std::string(class_getMethodTypes(target_, sel_registerName(selector)).value_or("none"));
    }

    Class target_;
};

TEST_F(HookGroups, RunTheLaterReplacementFirst)
{
    send<"speak", void>(send<"new">(id(target_)));
    EXPECT_EQ(journal, "21stock ");
}

TEST_F(HookGroups, PlaceClassMethodsOnTheMetaclassAndAddWithTheirTypes)
{
    EXPECT_EQ((send<"family", NSInteger>(id(target_))), 42);
    EXPECT_EQ(types("shout"), "v@:");
    EXPECT_EQ(types("agree:with:"), "B@:@@");
    EXPECT_EQ(types("al_dot"), "@@:");
    EXPECT_EQ(types("setAl_dot:"), "v@:@");
    EXPECT_EQ(types("family"), "none");
}

TEST_F(HookGroups, LeaveRowsOfAbsentClassesAndSelectorsWithoutEffect)
{
    for (const HookRow& row : { NobodysSpeak::row(), NoMethod::row() })
        EXPECT_EQ(*row.original, nullptr);
    EXPECT_EQ(types("absentSelector"), "none");
    EXPECT_FALSE(objc_getClass("AbsentClass"));
    std::string exists;
    for (const HookRow& row : firstRows)
        exists += hookTargetExists(row) ? 'y' : 'n';
    EXPECT_EQ(exists, "ynnyynyyn");
}

TEST_F(HookGroups, AddPropertiesThatRetainAValueForEachObject)
{
    const auto property = class_getProperty(target_, "al_dot");
    ASSERT_TRUE(property);
    std::string attributes;
    for (const auto& [name, value] : property->attributes)
        attributes += name + "=" + value + " ";
    EXPECT_EQ(attributes, "T=@\"UIView\" &= N= ");

    const id one = send<"new">(id(target_));
    const id two = send<"new">(id(target_));
    EXPECT_FALSE(send<"al_dot">(one));
    send<"setAl_dot:", void>(one, string("a dot of its own"));
    send<"setAl_other:", void>(one, string("other"));
    EXPECT_EQ(describe(send<"al_dot">(one)), R"("a dot of its own")");
    EXPECT_EQ(describe(send<"al_other">(one)), R"("other")");
    EXPECT_FALSE(send<"al_dot">(two));
    send<"setAl_dot:", void>(one, nil);
    EXPECT_FALSE(send<"al_dot">(one));
}

} // namespace

} // namespace appledger
