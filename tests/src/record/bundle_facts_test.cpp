#include "record/bundle_facts.h"

#include "platform/foundation/values.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

std::string described(const BundleFacts& facts)
{
    std::string text;
    for (const id& fact : { facts.minimumOSVersion, facts.internalVersion, facts.platformVersion, facts.urlSchemes,
             facts.queriesSchemes, facts.activityTypes, facts.backgroundModes })
        text += describe(fact) + " ";
    return text + (facts.isEncrypted ? "encrypted" : "decrypted");
}

std::string read(const id& information)
{
    std::string asked;
    const BundleFacts facts = readBundleFacts(information, [&](const std::string& name) {
        asked = " by " + name;
        return true;
    });
    return described(facts) + asked;
}

id urlTypes(std::initializer_list<id> types)
{
    return dictionary({ { "CFBundleURLTypes", array(std::vector<id>(types)) } });
}

id schemes(const id& value)
{
    return dictionary({ { "CFBundleURLSchemes", value } });
}

TEST(BundleFacts, AreReadFromTheInformationWhateverItsTypes)
{
    const std::string nothing = "nil nil nil nil nil nil nil decrypted";
    const std::pair<id, std::string> cases[] {
        { nil, nothing },
        { array({ "CFBundleVersion" }), nothing },
        { dictionary({}), nothing },
        { dictionary({ { "MinimumOSVersion", string("12.0") }, { "CFBundleVersion", string("7") },
              { "DTPlatformVersion", string("16.0") }, { "LSApplicationQueriesSchemes", array({ "a", "b" }) },
              { "NSUserActivityTypes", array({ "c" }) }, { "UIBackgroundModes", array({ "d" }) },
              { "CFBundleExecutable", string("App") } }),
            R"("12.0" "7" "16.0" nil ["a", "b"] ["c"] ["d"] encrypted by App)" },
        { dictionary({ { "MinimumOSVersion", number(12) }, { "CFBundleVersion", array({ "7" }) },
              { "DTPlatformVersion", boolean(true) } }),
            R"(12 ["7"] true nil nil nil nil decrypted)" },
        { dictionary({ { "LSApplicationQueriesSchemes", string("a") }, { "NSUserActivityTypes", number(1) },
              { "UIBackgroundModes", dictionary({ { "d", number(1) } }) } }),
            nothing },
        { urlTypes({ schemes(array({ "a" })), schemes(array({ "b" })) }),
            R"(nil nil nil ["a"] nil nil nil decrypted)" },
        { urlTypes({ dictionary({}), schemes(array({ "b" })) }), nothing },
        { urlTypes({ string("a"), schemes(array({ "b" })) }), nothing },
        { urlTypes({ schemes(string("a")) }), nothing },
        { urlTypes({}), nothing },
        { dictionary({ { "CFBundleURLTypes", schemes(array({ "a" })) } }), nothing },
        { dictionary({ { "CFBundleExecutable", string("") } }), nothing },
        { dictionary({ { "CFBundleExecutable", number(7) } }), nothing },
        { urlTypes({ schemes(array(std::vector<id> { number(1), string("a") })) }),
            R"(nil nil nil [1, "a"] nil nil nil decrypted)" },
    };
    for (const auto& [information, expected] : cases)
        EXPECT_EQ(read(information), expected) << describe(information);
}

} // namespace

} // namespace appledger
