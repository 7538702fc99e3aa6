#include "cli/history/transaction.h"

#include <algorithm>

namespace cli {

using Json = nlohmann::json;

namespace {

bool isSameItem(const ItemChange& one, const ItemChange& other)
{
    return one.name == other.name && one.item == other.item;
}

std::vector<ItemChange> itemsOf(const Transaction& transaction)
{
    std::vector<ItemChange> items;
    for (const ValueChange& change : transaction.changes)
        for (ItemChange& item : change.items())
            items.push_back(std::move(item));
    return items;
}

Json confirmedJson(const ItemChange& item)
{
    return { { "place", static_cast<int>(item.name.place) }, { "key", item.name.key },
        { "item", item.item ? Json(*item.item) : Json() } };
}

std::optional<ItemChange> confirmedFrom(const Json& object)
{
    if (!object.is_object() || !object.value("key", Json()).is_string())
        return std::nullopt;
    ItemChange item { ValueName::ofKey(object["key"].get<std::string>()) };
    const Json place = object.value("place", Json(0));
    if (place == static_cast<int>(ValueName::Place::MuteFile))
        item.name = ValueName::muteList();
    else if (place == static_cast<int>(ValueName::Place::BrightnessFile))
        item.name = ValueName::brightnessTable();
    if (const Json text = object.value("item", Json()); text.is_string())
        item.item = text.get<std::string>();
    return item;
}

template <class Number> std::optional<Number> numberIn(const Json& object, const char* key)
{
    const auto found = object.find(key);
    return found != object.end() && found->is_number() ? std::optional(found->get<Number>()) : std::nullopt;
}

} // namespace

Json Transaction::toJson() const
{
    Json object { { "n", number }, { "at", time }, { "verb", verb }, { "changes", Json::array() } };
    for (const ValueChange& change : changes)
        object["changes"].push_back(change.toJson());
    for (const ItemChange& item : confirmed)
        object["confirms"].push_back(confirmedJson(item));
    if (until)
        object["until"] = *until;
    if (undoes)
        object["undoes"] = *undoes;
    if (redoes)
        object["redoes"] = *redoes;
    if (!ends.empty())
        object["ends"] = ends;
    if (watched)
        object["watched"] = *watched;
    return object;
}

std::optional<Transaction> Transaction::fromJson(const Json& object)
{
    const auto number = object.is_object() ? numberIn<ChangeNumber>(object, "n") : std::nullopt;
    const auto time = number ? numberIn<double>(object, "at") : std::nullopt;
    if (!time || !object.value("verb", Json()).is_string())
        return std::nullopt;
    Transaction transaction { .number = *number, .time = *time, .verb = object["verb"].get<std::string>() };
    for (const Json& each : object.value("changes", Json::array())) {
        auto change = ValueChange::fromJson(each);
        if (!change)
            return std::nullopt;
        transaction.changes.push_back(std::move(*change));
    }
    for (const Json& each : object.value("confirms", Json::array()))
        if (auto item = confirmedFrom(each))
            transaction.confirmed.push_back(std::move(*item));
    transaction.until = numberIn<double>(object, "until");
    transaction.undoes = numberIn<ChangeNumber>(object, "undoes");
    transaction.redoes = numberIn<ChangeNumber>(object, "redoes");
    for (const Json& each : object.value("ends", Json::array()))
        if (each.is_number_unsigned())
            transaction.ends.push_back(each.get<ChangeNumber>());
    if (object.contains("watched"))
        transaction.watched = object["watched"];
    return transaction;
}

void History::add(Transaction transaction)
{
    const ChangeNumber number = transaction.number;
    last_ = std::max(last_, number);
    updateTimers(transaction);
    if (transaction.undoes) {
        std::erase(done_, *transaction.undoes);
        undone_.push_back(*transaction.undoes);
    } else if (transaction.redoes) {
        std::erase(undone_, *transaction.redoes);
        done_.push_back(number);
    } else if (!transaction.ends.empty()) {
        for (const ChangeNumber ended : transaction.ends)
            std::erase(done_, ended);
    } else if (!transaction.changes.empty()) {
        done_.push_back(number);
        undone_.clear();
    }
    transactions_.push_back(std::move(transaction));
}

const Transaction* History::find(ChangeNumber number) const
{
    const auto found = std::ranges::find(transactions_, number, &Transaction::number);
    return found == transactions_.end() ? nullptr : &*found;
}

std::optional<ChangeNumber> History::undoable() const
{
    return done_.empty() || !find(done_.back()) ? std::nullopt : std::optional(done_.back());
}

std::optional<ChangeNumber> History::redoable() const
{
    return undone_.empty() || !find(undone_.back()) ? std::nullopt : std::optional(undone_.back());
}

const Timer* History::timerOf(const ItemChange& item) const
{
    const auto found
        = std::ranges::find_if(timers_, [&item](const Timer& timer) { return isSameItem(timer.item, item); });
    return found == timers_.end() ? nullptr : &*found;
}

std::optional<double> History::deadline() const
{
    const auto first = std::ranges::min_element(timers_, {}, &Timer::until);
    return first == timers_.end() ? std::nullopt : std::optional(first->until);
}

/// What is spoken of again ends as late as was said last, and what is said for good doesn't end; in both cases what it
/// was before the first of these changes is what comes back.
void History::updateTimers(const Transaction& transaction)
{
    std::vector<ItemChange> items = itemsOf(transaction);
    items.insert(items.end(), transaction.confirmed.begin(), transaction.confirmed.end());
    for (ItemChange& item : items) {
        const auto former
            = std::ranges::find_if(timers_, [&item](const Timer& timer) { return isSameItem(timer.item, item); });
        const bool isTimed = former != timers_.end();
        ItemChange kept = isTimed ? former->item : std::move(item);
        const bool isConfirmed = isTimed || !(kept.before.is_null() && kept.after.is_null());
        if (isTimed)
            timers_.erase(former);
        if (transaction.until && isConfirmed)
            timers_.push_back({ transaction.number, *transaction.until, std::move(kept) });
    }
}

} // namespace cli
