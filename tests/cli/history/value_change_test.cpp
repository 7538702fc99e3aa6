#include "cli/history/transaction.h"
#include "cli/history/value_change.h"
#include "cli/history/value_text.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>
#include <limits>

namespace cli {

using namespace platform;
using Json = nlohmann::json;
using Direction = ValueChange::Direction;
using Clash = ValueChange::Clash;

TEST(ValueText, LosesNothingAndTellsKindsApart)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const id values[] { boolean(true), number(1), real(1), real(infinity), real(-infinity), string("$data"),
        data(std::string_view("\0\xFF", 2)), date(-1.25), array({ "a", "b" }), dictionary({}),
        dictionary({ { "$data", string("00") } }), dictionary({ { "$table", dictionary({ { "$x", number(2) } }) } }),
        number(std::numeric_limits<std::int64_t>::min()) };
    for (const id& value : values) {
        const Json json = jsonFromValue(value);
        const auto back = valueFromJson(Json::parse(json.dump()));
        ASSERT_TRUE(back) << json;
        EXPECT_TRUE(isEqual(*back, value)) << json;
        EXPECT_TRUE(isSameValue(jsonFromValue(*back), json)) << json;
    }
    EXPECT_FALSE(isSameValue(1, 1.0));
    EXPECT_FALSE(isSameValue(true, 1));
    EXPECT_FALSE(isSameValue(Json { { "a", { 1 } } }, Json { { "a", { 1.0 } } }));
    for (const char* const wrong : { R"({"$data":"0"})", R"({"$data":"zz"})", R"({"$real":"x"})", R"([null])",
             R"({"a":null})", "18446744073709551615", R"("\u0000")" })
        EXPECT_FALSE(valueFromJson(Json::parse(wrong))) << wrong;
}

TEST(ValueChange, IsCarriedOutAndTakenBackBesideTheChangesOfOthers)
{
    struct Case {
        const char* what;
        Json before;
        Json after;
        Json present; ///< what others have made of `after` meanwhile
        Json takenBack; ///< from `present`; "same" where it is left
    };
    const Json same = "same";
    const Case cases[] {
        { "alone", { "a", "b" }, { "a", "b", "c" }, { "a", "b", "c" }, { "a", "b" } },
        { "in its old place", { "a", "b", "c" }, { "a", "c" }, { "a", "c" }, { "a", "b", "c" } },
        { "with another's item behind", { "a" }, { "a", "b" }, { "a", "b", "x" }, { "a", "x" } },
        { "with another's item before", { "a", "b" }, { "a" }, { "x", "a" }, { "x", "a", "b" } },
        { "taken back by another", { "a" }, { "a", "b" }, { "a" }, same },
        { "first item", nullptr, { "a" }, { "a" }, nullptr },
        { "first item, and another's", nullptr, { "a" }, { "a", "x" }, { "x" } },
        { "order", { "a", "b" }, { "b", "a" }, { "b", "a" }, { "a", "b" } },
        { "entry", { { "a", 1 } }, { { "a", 2 } }, { { "a", 2 }, { "x", 1 } }, { { "a", 1 }, { "x", 1 } } },
        { "new entry", { { "a", 1 } }, { { "a", 1 }, { "b", 1 } }, { { "b", 1 } }, Json::object() },
        { "flag", false, true, true, false },
        { "flag that others have set", "#111111", "#222222", "#333333", same },
        { "kind", 1, 1.0, 1.0, 1 },
        { "of another type meanwhile", { "a" }, { "a", "b" }, "text", same },
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.what);
        const auto change = ValueChange::between(ValueName::ofKey("k"), expected.before, expected.after);
        ASSERT_TRUE(change);
        const auto read = ValueChange::fromJson(Json::parse(change->toJson().dump()));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->toJson(), change->toJson());
        const auto forward = read->carriedOut(expected.before, Direction::Forward, Clash::Leave);
        ASSERT_TRUE(forward);
        EXPECT_TRUE(isSameValue(*forward, expected.after)) << *forward;
        EXPECT_FALSE(read->carriedOut(expected.after, Direction::Forward, Clash::Leave)) << "twice is once";
        const auto back = read->carriedOut(expected.present, Direction::Back, Clash::Leave);
        EXPECT_TRUE(isSameValue(back.value_or(same), expected.takenBack)) << back.value_or(same);
    }
    EXPECT_FALSE(ValueChange::between(ValueName::ofKey("k"), { "a" }, { "a" }));
}

TEST(History, TellsWhatTakesItselfBackAndWhatIsNext)
{
    const ValueName key = ValueName::ofKey("ALBlockedLaunchApps");
    ChangeNumber number = 0;
    History history;
    const auto add = [&](const Json& before, const Json& after, std::optional<double> until = std::nullopt) {
        Transaction transaction { .number = ++number, .verb = "v", .until = until };
        if (auto change = ValueChange::between(key, before, after))
            transaction.changes.push_back(*change);
        else
            transaction.confirmed.push_back({ key, "a" });
        history.add(*Transaction::fromJson(Json::parse(transaction.toJson().dump())));
    };
    add(nullptr, { "a", "b" });
    add({ "a", "b" }, { "b" }, 100);
    ASSERT_EQ(history.timers().size(), 1U);
    EXPECT_EQ(history.timers()[0].item.item, "a");
    EXPECT_EQ(history.timers()[0].item.before, true);
    add({ "b" }, { "b" }, 200); // it is said again, for longer
    EXPECT_EQ(history.deadline(), 200);
    EXPECT_EQ(history.timers()[0].item.before, true) << "what it was before the first of them";
    add({ "b" }, { "b", "a" }); // for good
    EXPECT_FALSE(history.deadline());

    EXPECT_EQ(history.undoable(), 4U);
    history.add({ .number = ++number, .undoes = 4 });
    EXPECT_EQ(history.undoable(), 2U);
    EXPECT_EQ(history.redoable(), 4U);
    history.add({ .number = ++number, .redoes = 4 });
    EXPECT_EQ(history.undoable(), 6U) << "what was made again is taken back as any other";
    EXPECT_FALSE(history.redoable());
}

} // namespace cli
