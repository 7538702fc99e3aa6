#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"

#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <unordered_map>

namespace platform {
namespace {

std::string raised(const std::function<void()>& action)
{
    try {
        action();
    } catch (const NSException& exception) {
        return exception.name();
    }
    return "nothing";
}

TEST(Arrays, AnswerAsTheSystemsDo)
{
    const id letters = array({ "a", "b" });
    EXPECT_EQ((send<"count", NSUInteger>(letters)), 2U);
    EXPECT_EQ((send<"indexOfObject:", NSUInteger>(letters, string("b"))), 1U);
    EXPECT_EQ((send<"indexOfObject:", NSUInteger>(letters, string("c"))), NSNotFound);
    EXPECT_TRUE((send<"containsObject:", bool>(letters, string("a"))));
    EXPECT_FALSE((send<"containsObject:", bool>(letters, nil)));
    EXPECT_FALSE((send<"containsObject:", bool>(nil, string("a"))));
    EXPECT_EQ(describe(send<"arrayByAddingObjectsFromArray:">(letters, array({ "c" }))), R"(["a", "b", "c"])");
    EXPECT_EQ(describe(send<"lastObject">(emptyArray())), "nil");
    EXPECT_EQ(raised([&] { send<"objectAtIndex:">(letters, NSUInteger { 2 }); }), "NSRangeException");
    EXPECT_FALSE(respondsTo<"addObject:">(letters));
}

TEST(Arrays, ContainsComparesByValueAndKnowsKinds)
{
    const auto items = *asArray(array({ string("1"), nil, number(2) }));
    EXPECT_EQ(items.size(), 2U);
    EXPECT_TRUE(items.contains("1"));
    EXPECT_FALSE(items.contains("2"));
    EXPECT_TRUE(items.contains(real(2)));
    EXPECT_FALSE(items.contains(nil));
}

TEST(Arrays, AMutableOneIsAnArrayThatChanges)
{
    const id list = mutableArray();
    EXPECT_TRUE(isKindOfClass(list, objc_getClass("NSArray")));
    for (const char* const text : { "a", "b", "a", "c" })
        send<"addObject:", void>(list, string(text));
    const id frozen = send<"copy">(list);
    send<"removeObject:", void>(list, string("a"));
    send<"insertObject:atIndex:", void>(list, string("z"), NSUInteger { 2 });
    send<"replaceObjectAtIndex:withObject:", void>(list, NSUInteger { 0 }, number(7));
    EXPECT_EQ(describe(list), R"([7, "c", "z"])");
    EXPECT_EQ(describe(frozen), R"(["a", "b", "a", "c"])");
    EXPECT_FALSE(respondsTo<"addObject:">(frozen));
    EXPECT_TRUE(isEqual(send<"mutableCopy">(frozen), frozen));

    EXPECT_EQ(raised([&] { send<"addObject:", void>(list, nil); }), "NSInvalidArgumentException");
    EXPECT_EQ(
        raised([&] { send<"insertObject:atIndex:", void>(list, number(1), NSUInteger { 4 }); }), "NSRangeException");
    EXPECT_EQ(raised([&] { send<"removeObjectAtIndex:", void>(list, NSUInteger { 3 }); }), "NSRangeException");
    EXPECT_EQ(raised([] { send<"removeLastObject", void>(mutableArray()); }), "NSRangeException");
}

/// Empties the list that it was removed from when it goes.
class Emptier final : public NSObject {
public:
    static const ClassDefinition definition;
    explicit Emptier(const id& list)
        : list(list.get())
    {
    }
    void dealloc() { send<"removeAllObjects", void>(list); }

    NSObject* list;
};

constexpr MethodDefinition emptierMethods[] { method<"dealloc", &Emptier::dealloc>() };
const ClassDefinition Emptier::definition { .name = "Emptier", .methods = emptierMethods };

TEST(Collections, AnObjectThatGoesMayChangeTheCollectionItWasIn)
{
    const id list = mutableArray();
    const id members = mutableSet();
    const id pairs = mutableDictionary();
    const auto refill = [&] {
        send<"addObject:", void>(list, make<Emptier>(list));
        send<"addObject:", void>(list, number(1));
        send<"addObject:", void>(members, make<Emptier>(members));
        send<"setObject:forKey:", void>(pairs, make<Emptier>(pairs), string("key"));
        send<"setObject:forKey:", void>(pairs, number(1), string("other"));
    };
    refill();
    send<"removeObjectAtIndex:", void>(list, NSUInteger { 0 });
    send<"removeAllObjects", void>(members);
    send<"setObject:forKey:", void>(pairs, number(2), string("key"));
    EXPECT_EQ(describe(list) + describe(members) + describe(pairs), "[]{}{}");
    refill();
    send<"removeAllObjects", void>(list);
    send<"removeObject:", void>(members, send<"anyObject">(members));
    send<"removeObjectForKey:", void>(pairs, string("key"));
    EXPECT_EQ(describe(list) + describe(members) + describe(pairs), "[]{}{}");
}

TEST(Dictionaries, KeepOrderAndTheLaterValue)
{
    const id pairs = dictionary({ { "b", number(1) }, { "a", nil }, { "c", number(2) }, { "b", number(3) } });
    EXPECT_EQ(describe(pairs), R"({"b": 3, "c": 2})");
    EXPECT_EQ(describe(dictionaryBySetting(pairs, "d", number(4))), R"({"b": 3, "c": 2, "d": 4})");
    EXPECT_EQ(describe(dictionaryBySetting(pairs, "b", nil)), R"({"c": 2})");
    EXPECT_EQ(describe(dictionaryBySetting(nil, "b", number(1))), R"({"b": 1})");
    EXPECT_EQ(describe(pairs), R"({"b": 3, "c": 2})");
    EXPECT_EQ(describe(send<"objectForKey:">(pairs, nil)), "nil");
    EXPECT_TRUE(isEqual(pairs, dictionary({ { "c", number(2) }, { "b", real(3) } })));
    EXPECT_FALSE(isEqual(pairs, dictionary({ { "c", number(2) }, { "d", number(3) } })));
}

TEST(Dictionaries, RaiseForANilAndTakeItBySubscript)
{
    const id pairs = mutableDictionary({ { string("a"), number(1) } });
    EXPECT_EQ(raised([&] { send<"setObject:forKey:", void>(pairs, nil, string("a")); }), "NSInvalidArgumentException");
    EXPECT_EQ(raised([&] { send<"setObject:forKey:", void>(pairs, number(1), nil); }), "NSInvalidArgumentException");
    send<"setObject:forKeyedSubscript:", void>(pairs, nil, string("a"));
    EXPECT_EQ(describe(pairs), "{}");
}

TEST(Dictionaries, AgreeWithAModelThroughManyChanges)
{
    std::mt19937 random(20260101);
    const id pairs = mutableDictionary();
    std::unordered_map<std::string, std::int64_t> model;
    for (int step = 0; step < 4000; ++step) {
        const std::string key = "key" + std::to_string(random() % 60);
        if (random() % 3 == 0) {
            send<"removeObjectForKey:", void>(pairs, string(key));
            model.erase(key);
        } else {
            send<"setObject:forKey:", void>(pairs, number(step), string(key));
            model[key] = step;
        }
    }
    const auto found = *asDictionary(pairs);
    ASSERT_EQ(found.size(), model.size());
    for (const auto& [key, value] : model)
        EXPECT_EQ(asInteger(found[key]), value) << key;
    EXPECT_EQ(found["absent"], nil);
}

TEST(Dictionaries, NumbersAsKeysAreFoundByValue)
{
    std::vector<std::pair<id, id>> many;
    for (int index = 0; index < 100; ++index)
        many.emplace_back(number(index), number(index * 2));
    const id pairs = dictionary(many);
    EXPECT_EQ(asInteger(send<"objectForKey:">(pairs, real(99))), 198);
}

TEST(Sets, HoldEachValueOnceInTheOrderGiven)
{
    const id members = set({ string("b"), string("a"), string("b"), nil, number(1), boolean(true) });
    EXPECT_EQ(describe(members), R"({"b", "a", 1})");
    EXPECT_TRUE((send<"containsObject:", bool>(members, real(1))));
    EXPECT_TRUE(isEqual(members, mutableSet({ number(1), string("a"), string("b") })));
    EXPECT_FALSE(isEqual(members, array({ string("b"), string("a"), number(1) })));

    const id changing = send<"mutableCopy">(members);
    for (int index = 0; index < 100; ++index)
        send<"addObject:", void>(changing, number(index));
    for (int index = 0; index < 100; index += 2)
        send<"removeObject:", void>(changing, number(index));
    EXPECT_EQ((send<"count", NSUInteger>(changing)), 52U);
    EXPECT_TRUE((send<"containsObject:", bool>(changing, number(99))));
    EXPECT_FALSE((send<"containsObject:", bool>(changing, number(98))));
}

TEST(Values, AskingForAnotherKindGivesNothing)
{
    const id everything[] { nil, string("1"), number(1), array({ "1" }), dictionary({ { "1", number(1) } }),
        set({ number(1) }), data("1"), date(1) };
    std::string found;
    for (const id& object : everything) {
        found += asString(object) ? 's' : '-';
        found += asInteger(object) ? 'n' : '-';
        found += asArray(object) ? 'a' : '-';
        found += asDictionary(object) ? 'd' : '-';
        found += asSet(object) ? 'e' : '-';
        found += asData(object) ? 'b' : '-';
        found += asDate(object) ? 't' : '-';
        found += ' ';
    }
    EXPECT_EQ(found, "------- s------ -n----- --a---- ---d--- ----e-- -----b- ------t ");
}

TEST(Values, DescribeEndsForACollectionThatHoldsItself)
{
    const id list = mutableArray();
    send<"addObject:", void>(list, list);
    EXPECT_TRUE(describe(list).ends_with("]"));
    send<"removeAllObjects", void>(list);
}

TEST(Values, SystemCodeMakesThemByClass)
{
    const id list = send<"new">(objc_getClass("NSMutableArray"));
    EXPECT_EQ(list, nil); // No class before its first value or its registration.
    mutableArray();
    EXPECT_EQ(describe(send<"new">(objc_getClass("NSMutableArray"))), "[]");
    mutableDictionary();
    EXPECT_EQ(describe(send<"dictionary">(objc_getClass("NSMutableDictionary"))), "{}");
}

} // namespace
} // namespace platform
