#include "core/bundle_identifier.h"

#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

id answerShort(const id&, SEL)
{
    return string("short");
}
id answerLong(const id&, SEL)
{
    return string("long");
}
id answerNumber(const id&, SEL)
{
    return number(7);
}
id answerNil(const id&, SEL)
{
    return nil;
}
id raise(const id&, SEL)
{
    throw NSException("NSInternalInconsistencyException", "no identifier");
}

constexpr MethodDefinition both[] { method<"bundleID", answerShort>(), method<"bundleIdentifier", answerLong>() };
constexpr MethodDefinition longOnly[] { method<"bundleIdentifier", answerLong>() };
constexpr MethodDefinition noString[] { method<"bundleID", answerNumber>() };
constexpr MethodDefinition nilFirst[] { method<"bundleID", answerNil>(), method<"bundleIdentifier", answerLong>() };
constexpr MethodDefinition raising[] { method<"bundleID", raise>(), method<"bundleIdentifier", answerLong>() };
constexpr MethodDefinition raisingLater[] { method<"bundleIdentifier", raise>() };

const ClassDefinition classes[] {
    { .name = "Both", .methods = both },
    { .name = "LongOnly", .methods = longOnly },
    { .name = "NoString", .methods = noString },
    { .name = "NilFirst", .methods = nilFirst },
    { .name = "Raising", .methods = raising },
    { .name = "RaisingLater", .methods = raisingLater },
    { .name = "Neither" },
};

TEST(SafeExtractBundleID, TakesTheFirstSelectorThatTheObjectAnswers)
{
    const char* const expected[] { R"("short")", R"("long")", "7", "nil", "nil", "nil", "nil" };
    for (std::size_t index = 0; index < std::size(classes); ++index) {
        const id object = send<"new">(id(registerClass(classes[index])));
        EXPECT_EQ(describe(ALSafeExtractBundleID(object)), expected[index]) << classes[index].name;
    }
    EXPECT_FALSE(ALSafeExtractBundleID(nil));
}

} // namespace

} // namespace appledger
