#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/uikit/cell_pool.h"
#include "platform/uikit/row_layout.h"
#include "platform/uikit/table_updates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace platform;

/// Numbers that are the same at each run.
std::size_t random(std::size_t below)
{
    static std::mt19937 generator(20);
    return generator() % below;
}

std::vector<SectionHeights> randomSections()
{
    std::vector<SectionHeights> sections(random(5));
    for (SectionHeights& section : sections) {
        section.header = static_cast<double>(random(3)) * 10;
        section.footer = static_cast<double>(random(3)) * 5;
        section.rows.resize(random(6));
        for (double& row : section.rows)
            row = static_cast<double>(random(4)) * 11;
    }
    return sections;
}

TEST(RowLayout, FindsTheRowsThatWalkingThroughAllWouldFind)
{
    for (int round = 0; round < 2000; ++round) {
        const auto sections = randomSections();
        const RowLayout layout(sections, 100);
        const double y = static_cast<double>(random(400)) / 2 - 20;
        const CGRect window = CGRectMake(0, y, 100, static_cast<double>(random(120)));
        std::optional<RowPath> covering;
        std::vector<RowPath> touched;
        double top = 0;
        for (std::size_t section = 0; section < sections.size(); ++section) {
            EXPECT_EQ(layout.rectOfHeader(section), CGRectMake(0, top, 100, sections[section].header));
            top += sections[section].header;
            for (std::size_t row = 0; row < sections[section].rows.size(); ++row) {
                const double height = sections[section].rows[row];
                EXPECT_EQ(layout.rectOf({ section, row }), CGRectMake(0, top, 100, height));
                if (top <= y && y < top + height)
                    covering = { section, row };
                if (height > 0 && window.size.height > 0 && top < CGRectGetMaxY(window) && top + height > y)
                    touched.push_back({ section, row });
                top += height;
            }
            EXPECT_EQ(layout.rectOfFooter(section), CGRectMake(0, top, 100, sections[section].footer));
            top += sections[section].footer;
        }
        EXPECT_EQ(layout.height(), top);
        ASSERT_EQ(layout.rowAt(y), covering) << round;
        ASSERT_EQ(layout.rowsIn(window), touched) << round;
    }
}

IndexMap::Indices some(std::size_t below, std::size_t count)
{
    IndexMap::Indices indices;
    while (indices.size() < count)
        indices.insert(random(below));
    return indices;
}

/// Takes out by the places before and puts in, as 0, by the places after.
template <class Entry>
void change(std::vector<Entry>& list, const IndexMap::Indices& removed, const IndexMap::Indices& inserted)
{
    for (auto index = removed.rbegin(); index != removed.rend(); ++index)
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(*index));
    for (const std::size_t index : inserted)
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(index), Entry {});
}

TEST(TableUpdates, SayOfEveryRowWhereItIsAfterwards)
{
    for (int round = 0; round < 2000; ++round) {
        // Rows bear numbers from 1; what is put in bears 0.
        std::vector<std::vector<int>> list(1 + random(4));
        TableUpdates::Counts before;
        std::map<int, RowPath> old;
        int number = 0;
        for (std::size_t section = 0; section < list.size(); ++section) {
            before.push_back(random(6));
            for (std::size_t row = 0; row < before.back(); ++row) {
                list[section].push_back(++number);
                old[number] = { section, row };
            }
        }
        TableUpdates updates(before);
        const auto removedSections = some(list.size(), random(list.size() + 1));
        const std::size_t left = list.size() - removedSections.size();
        const std::size_t added = random(3);
        const auto insertedSections = some(left + added + (left + added == 0), added);
        for (const std::size_t section : removedSections)
            updates.removeSection(section);
        for (const std::size_t section : insertedSections)
            updates.insertSection(section);
        const IndexMap sections(list.size(), removedSections, insertedSections);
        for (std::size_t section = 0; section < list.size(); ++section) {
            const auto after = sections.newIndexOf(section);
            if (!after)
                continue;
            const std::size_t count = list[section].size();
            const auto removed = some(count + (count == 0), count == 0 ? 0 : random(count + 1));
            const std::size_t more = random(3);
            const auto inserted = some(std::max<std::size_t>(count - removed.size() + more, 1), more);
            // Insertions first: the order of the calls says nothing.
            for (const std::size_t row : inserted)
                updates.insertRow({ *after, row });
            for (const std::size_t row : removed)
                updates.removeRow({ section, row });
            change(list[section], removed, inserted);
        }
        change(list, removedSections, insertedSections);
        for (const std::size_t section : insertedSections)
            list[section].resize(random(3));
        TableUpdates::Counts after;
        for (const auto& rows : list)
            after.push_back(rows.size());
        updates.end(after);
        std::map<int, RowPath> found;
        for (std::size_t section = 0; section < list.size(); ++section)
            for (std::size_t row = 0; row < list[section].size(); ++row) {
                ASSERT_EQ(updates.isNew({ section, row }), list[section][row] == 0);
                if (list[section][row] != 0)
                    found[list[section][row]] = { section, row };
            }
        for (const auto& [name, path] : old)
            ASSERT_EQ(updates.newPathOf(path), found.contains(name) ? std::optional(found[name]) : std::nullopt);
    }
}

TEST(TableUpdates, RaiseWithBothNumbersWhatDoesNotAddUp)
{
    const struct {
        const char* name;
        void (*say)(TableUpdates& updates);
        TableUpdates::Counts after;
        const char* raised; ///< "" for nothing
    } cases[] {
        { "nothing said, nothing changed", [](TableUpdates&) {}, { 2, 3 }, "" },
        { "a row too many", [](TableUpdates&) {}, { 2, 4 },
            "section 1 there are 4 after it, and what was said makes 3" },
        { "a row said",
            [](TableUpdates& updates) {
                updates.insertRow({ 1, 3 });
            },
            { 2, 4 }, "" },
        { "behind the end",
            [](TableUpdates& updates) {
                updates.insertRow({ 1, 9 });
            },
            { 2, 4 }, "there are 4" },
        { "not there",
            [](TableUpdates& updates) {
                updates.removeRow({ 0, 7 });
            },
            { 1, 3 }, "there are 1" },
        { "a section gone", [](TableUpdates&) {}, { 2 }, "sections there are 1 after it, and what was said makes 2" },
        { "a section said", [](TableUpdates& updates) { updates.removeSection(0); }, { 3 }, "" },
        { "a section reloaded", [](TableUpdates& updates) { updates.reloadSection(1); }, { 2, 9 }, "" },
        { "a row reloaded",
            [](TableUpdates& updates) {
                updates.reloadRow({ 0, 1 });
            },
            { 2, 3 }, "" },
    };
    for (const auto& [name, say, after, raised] : cases) {
        TableUpdates updates({ 2, 3 });
        say(updates);
        std::string reason;
        try {
            updates.end(after);
        } catch (const NSException& exception) {
            reason = exception.what();
        }
        EXPECT_EQ(reason.empty(), std::string_view(raised).empty()) << name << ": " << reason;
        EXPECT_NE(reason.find(raised), std::string::npos) << name << ": " << reason;
    }
    TableUpdates updates({ 2, 3 });
    updates.reloadRow({ 0, 1 });
    updates.removeRow({ 0, 0 });
    updates.reloadSection(1);
    updates.end({ 1, 1 });
    EXPECT_TRUE(updates.isReloaded({ 0, 1 }));
    EXPECT_EQ(updates.newPathOf({ 0, 1 }), (RowPath { 0, 0 }));
    EXPECT_TRUE(updates.isNew({ 1, 0 })) << "a reloaded section's rows are all asked for";
    EXPECT_FALSE(updates.newPathOf({ 1, 0 }));
}

class Cell final : public NSObject {
public:
    int prepared = 0;
    void prepareForReuse() { ++prepared; }
};
constexpr MethodDefinition cellMethods[] { method<"prepareForReuse", &Cell::prepareForReuse>() };
const ClassDefinition Cell_class { .name = "Cell", .allocate = allocate<Cell>, .methods = cellMethods };

TEST(CellPool, GivesACellOutOnceAndPreparedAndByItsIdentifierAlone)
{
    CellPool pool;
    const id cell = send<"new">(id(registerClass(Cell_class)));
    EXPECT_EQ(pool.take("row"), nil);
    pool.put("row", cell);
    EXPECT_EQ(pool.take("other"), nil);
    EXPECT_EQ(pool.take("row"), cell);
    EXPECT_EQ(static_cast<Cell&>(*cell).prepared, 1);
    EXPECT_EQ(pool.take("row"), nil);
}

} // namespace
