#include "core/late_bound_functions.h"

#include "platform/darwin/images.h"
#include "platform/darwin/system.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view newerImage = "/System/Library/PrivateFrameworks/SpringBoard.framework/SpringBoard";
constexpr std::string_view olderImage
    = "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices";

int invalidated = 0;

template <std::uintptr_t Value> void* createAssertion(const void*, const id&, int, int*)
{
    return reinterpret_cast<void*>(Value);
}
void invalidateAssertion(void*)
{
    ++invalidated;
}
int resetAccess(const id&, const id&)
{
    return 5;
}
id copyInformation(const id&)
{
    static NSObject* const information = mutableArray({ string("granted") }).leak();
    return information;
}

template <auto Function> ImageSymbol symbol(std::string_view name)
{
    return { name, reinterpret_cast<IMP>(Function) };
}

void declareAssertionImages()
{
    constexpr std::string_view create = "SBSApplicationTerminationAssertionCreateWithError";
    const ImageSymbol newer[] { symbol<&createAssertion<13>>(create),
        symbol<&invalidateAssertion>("SBSApplicationTerminationAssertionInvalidate") };
    const ImageSymbol older[] { symbol<&createAssertion<12>>(create) };
    declareImage(newerImage, newer);
    declareImage(olderImage, older);
}

std::uintptr_t assertion()
{
    return reinterpret_cast<std::uintptr_t>(
        SBSApplicationTerminationAssertionCreateWithError(nullptr, string("a"), 1, nullptr));
}

TEST(LateBoundFunctions, DoNothingBeforeTheyAreBoundAndWhereTheSystemHasNone)
{
    setProcessFacts({ "com.apple.springboard", "SpringBoard", { 16, 0, 0 } });
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(assertion(), 0U);
        SBSApplicationTerminationAssertionInvalidate(&invalidated);
        EXPECT_EQ(TCCAccessResetForBundle(string("service"), string("a")), 0);
        EXPECT_FALSE(TCCAccessCopyInformationForBundle(string("a")));
        bindTerminationAssertionFunctions();
        bindTCCFunctions();
    }
}

TEST(LateBoundFunctions, ComeFromTheImageOfTheVersion)
{
    declareAssertionImages();
    const std::pair<SystemVersion, std::uintptr_t> cases[]
        = { { { 12, 4, 9 }, 12 }, { { 13, 0, 0 }, 13 }, { { 16, 0, 0 }, 13 } };
    for (const auto& [version, expected] : cases) {
        setProcessFacts({ "com.apple.springboard", "SpringBoard", version });
        bindTerminationAssertionFunctions();
        EXPECT_EQ(assertion(), expected) << version.text();
        SBSApplicationTerminationAssertionInvalidate(&invalidated);
        EXPECT_EQ(std::exchange(invalidated, 0), expected == 13 ? 1 : 0) << "a symbol that is missing";
    }
}

TEST(LateBoundFunctions, OfTheAccessDatabaseCopyWhatTheyGive)
{
    const ImageSymbol symbols[] { symbol<&resetAccess>("TCCAccessResetForBundle"),
        symbol<&copyInformation>("TCCAccessCopyInformationForBundle") };
    declareImage("/System/Library/PrivateFrameworks/TCC.framework/TCC", symbols);
    bindTCCFunctions();
    EXPECT_EQ(TCCAccessResetForBundle(string("service"), string("a")), 5);
    const id information = TCCAccessCopyInformationForBundle(string("a"));
    EXPECT_EQ(describe(information), R"(["granted"])");
    EXPECT_NE(information, copyInformation(nil)) << "the database may go on to change its own";
}

} // namespace

} // namespace appledger
