#include "core/hook_group.h"

#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

#include <utility>

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

template <char Name> Original<void()> originalSpeak;
template <char Name> void replacedSpeak(const id& self, SEL cmd)
{
    journal += Name;
    originalSpeak<Name>(self, cmd);
}

Original<NSInteger()> originalFamily;
NSInteger replacedFamily(const id& self, SEL cmd)
{
    return originalFamily(self, cmd) * 6;
}

void shout(const id&, SEL)
{
    journal += "SHOUT";
}
bool agree(const id&, SEL, const id&, const id&)
{
    return true;
}

Original<void()> neverWritten;

constexpr HookRow firstRows[] {
    replace<&replacedSpeak<'1'>>("Target", "speak", originalSpeak<'1'>),
    replace<&replacedSpeak<'x'>>("AbsentClass", "speak", neverWritten),
    replace<&replacedSpeak<'x'>>("Target", "absentSelector", neverWritten),
    replaceClassMethod<&replacedFamily>("Target", "family", originalFamily),
    add<&shout>("Target", "shout"),
    add<&shout>("AbsentClass", "shout"),
    add<&agree>("Target", "agree:with:"),
    addProperty<"al_dot">("Target", "setAl_dot:", "@\"UIView\""),
    addProperty<"al_dot">("AbsentClass", "setAl_dot:", "@\"UIView\""),
};
constexpr HookRow secondRows[] {
    replace<&replacedSpeak<'2'>>("Target", "speak", originalSpeak<'2'>),
    addProperty<"al_other">("Target", "setAl_other:", "@\"UIView\""),
};
constexpr HookRow wholeRows[] { replaceWhole<&shout>("Target", "speak") };

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
    EXPECT_EQ(std::exchange(journal, {}), "21stock ");
    installHookGroup({ "Whole", wholeRows });
    send<"speak", void>(send<"new">(id(target_)));
    EXPECT_EQ(std::exchange(journal, {}), "SHOUT");
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
    EXPECT_EQ(neverWritten.implementation, nullptr);
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
