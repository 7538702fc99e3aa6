#include "platform/foundation/user_defaults.h"

#include "platform/foundation/defaults_domain.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/value_objects.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace platform {

namespace {

/// The pairs of the one, with those of the other over them.
id dictionaryByAdding(const id& base, const id& other)
{
    const id merged = base ? send<"mutableCopy">(base) : mutableDictionary();
    send<"addEntriesFromDictionary:", void>(merged, other);
    return send<"copy">(merged);
}

NSUserDefaults& defaultsOf(const id& self)
{
    return static_cast<NSUserDefaults&>(*self);
}

std::string textOf(const id& object)
{
    const auto text = asString(object);
    return text ? text->text() : std::string();
}

/// A method that looks something up by its argument, a key.
template <auto Lookup> auto lookUp(const id& self, SEL, const id& key)
{
    return (defaultsOf(self).*Lookup)(textOf(key));
}

/// A method that sets a value for a key; what isn't a string is no key.
template <class Value, auto Setter> void set(const id& self, SEL, Value value, const id& key)
{
    if (asString(key))
        (defaultsOf(self).*Setter)(value, textOf(key));
}

id initWithSuiteName(const id&, SEL, const id& name)
{
    return NSUserDefaults::suite(textOf(name));
}

void removeObjectForKey(const id& self, SEL, const id& key)
{
    if (asString(key))
        defaultsOf(self).removeObject(textOf(key));
}

NSObject* allocateDefaults()
{
    // initWithSuiteName: puts an instance of the suite in its place.
    return new NSUserDefaults("");
}

constexpr MethodDefinition methods[] {
    method<"addObserver:forKeyPath:options:context:", &NSUserDefaults::addKeyValueObserver>(),
    method<"arrayForKey:", &lookUp<&NSUserDefaults::arrayForKey>>(),
    method<"boolForKey:", &lookUp<&NSUserDefaults::boolForKey>>(),
    method<"dictionaryForKey:", &lookUp<&NSUserDefaults::dictionaryForKey>>(),
    method<"dictionaryRepresentation", &NSUserDefaults::dictionaryRepresentation>(),
    method<"doubleForKey:", &lookUp<&NSUserDefaults::doubleForKey>>(),
    method<"initWithSuiteName:", &initWithSuiteName>(),
    method<"integerForKey:", &lookUp<&NSUserDefaults::integerForKey>>(),
    method<"objectForKey:", &lookUp<&NSUserDefaults::objectForKey>>(),
    method<"registerDefaults:", &NSUserDefaults::registerDefaults>(),
    method<"removeObjectForKey:", &removeObjectForKey>(),
    method<"removeObserver:forKeyPath:", &NSUserDefaults::removeKeyValueObserver>(),
    method<"setBool:forKey:", &set<bool, &NSUserDefaults::setBool>>(),
    method<"setDouble:forKey:", &set<double, &NSUserDefaults::setDouble>>(),
    method<"setInteger:forKey:", &set<NSInteger, &NSUserDefaults::setInteger>>(),
    method<"setObject:forKey:", &set<const id&, &NSUserDefaults::setObject>>(),
    method<"stringForKey:", &lookUp<&NSUserDefaults::stringForKey>>(),
    method<"synchronize", &NSUserDefaults::synchronize>(),
};

} // namespace

const ClassDefinition NSUserDefaults::definition {
    .name = "NSUserDefaults", .allocate = allocateDefaults, .methods = methods
};

Ref<NSUserDefaults> NSUserDefaults::suite(std::string_view name)
{
    return make<NSUserDefaults>(name);
}

NSUserDefaults::NSUserDefaults(std::string_view suiteName)
    : domain_(DefaultsDomain::named(suiteName))
{
    domain_->refresh();
}

NSUserDefaults::~NSUserDefaults()
{
    for (const KeyValueObservation& observation : observations_)
        domain_->removeObserver(observation.number);
}

id NSUserDefaults::objectForKey(std::string_view key) const
{
    if (id stored = domain_->value(key))
        return stored;
    const std::lock_guard lock(mutex_);
    return pairsOf(registered_)[key];
}

id NSUserDefaults::arrayForKey(std::string_view key) const
{
    const id value = objectForKey(key);
    return asArray(value) ? value : nil;
}

id NSUserDefaults::dictionaryForKey(std::string_view key) const
{
    const id value = objectForKey(key);
    return asDictionary(value) ? value : nil;
}

id NSUserDefaults::stringForKey(std::string_view key) const
{
    const id value = objectForKey(key);
    if (numberKind(value))
        return string(detail::numberText(value));
    return asString(value) ? value : nil;
}

bool NSUserDefaults::boolForKey(std::string_view key) const
{
    return boolValue(objectForKey(key));
}

std::int64_t NSUserDefaults::integerForKey(std::string_view key) const
{
    const id value = objectForKey(key);
    if (const auto text = asString(value))
        return detail::integerFromText(text->view());
    return asInteger(value).value_or(0);
}

double NSUserDefaults::doubleForKey(std::string_view key) const
{
    const id value = objectForKey(key);
    if (const auto text = asString(value))
        return detail::doubleFromText(text->view());
    return asDouble(value).value_or(0);
}

void NSUserDefaults::setObject(const id& value, std::string_view key)
{
    domain_->setValue(key, value);
}

void NSUserDefaults::setBool(bool value, std::string_view key)
{
    domain_->setValue(key, boolean(value));
}

void NSUserDefaults::setInteger(std::int64_t value, std::string_view key)
{
    domain_->setValue(key, number(value));
}

void NSUserDefaults::setDouble(double value, std::string_view key)
{
    domain_->setValue(key, real(value));
}

void NSUserDefaults::removeObject(std::string_view key)
{
    domain_->setValue(key, nil);
}

bool NSUserDefaults::synchronize()
{
    return domain_->synchronize();
}

int NSUserDefaults::lastError() const noexcept
{
    return domain_->lastError();
}

WriteOutcome NSUserDefaults::change(std::string_view key, const Change& change)
{
    return domain_->change(key, change);
}

std::string NSUserDefaults::readProblem() const
{
    return domain_->readProblem();
}

void NSUserDefaults::registerDefaults(const id& dictionary)
{
    const id copied = propertyListCopy(dictionary);
    const std::lock_guard lock(mutex_);
    registered_ = dictionaryByAdding(registered_, copied);
}

id NSUserDefaults::dictionaryRepresentation() const
{
    const id stored = domain_->values();
    const std::lock_guard lock(mutex_);
    return dictionaryByAdding(registered_, stored);
}

std::uint64_t NSUserDefaults::addObserver(std::string_view key, Observer changed)
{
    return domain_->addObserver(key, std::move(changed));
}

void NSUserDefaults::removeObserver(std::uint64_t number)
{
    domain_->removeObserver(number);
}

void NSUserDefaults::addKeyValueObserver(const id& observer, const id& keyPath, NSUInteger options, void* context)
{
    constexpr NSUInteger optionNew = 1;
    constexpr NSUInteger optionInitial = 4;
    const auto key = asString(keyPath);
    if (!observer || !key)
        return;
    const auto tell = [observer = Weak<NSObject>(observer), defaults = Weak<NSUserDefaults>(this), keyPath, options,
                          context](const id&) {
        constexpr std::int64_t setting = 1;
        const id target = observer.get();
        const Ref<NSUserDefaults> object = defaults.get();
        if (!target || !object)
            return;
        const id value = options & optionNew ? object->objectForKey(textOf(keyPath)) : nil;
        send<"observeValueForKeyPath:ofObject:change:context:", void>(
            target, keyPath, object, dictionary({ { "kind", number(setting) }, { "new", value } }), context);
    };
    const std::uint64_t number = addObserver(*key, tell);
    {
        const std::lock_guard lock(mutex_);
        observations_.push_back({ observer, key->text(), number });
    }
    if (options & optionInitial)
        tell(nil);
}

void NSUserDefaults::removeKeyValueObserver(const id& observer, const id& keyPath)
{
    const std::string key = textOf(keyPath);
    std::optional<std::uint64_t> number;
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::ranges::find_if(observations_,
            [&](const KeyValueObservation& one) { return one.key == key && one.observer == Weak<NSObject>(observer); });
        if (found == observations_.end())
            return;
        number = found->number;
        observations_.erase(found);
    }
    removeObserver(*number);
}

id CFPreferencesCopyAppValue(std::string_view key, std::string_view applicationID)
{
    return DefaultsDomain::named(applicationID)->valueInFile(key);
}

} // namespace platform
