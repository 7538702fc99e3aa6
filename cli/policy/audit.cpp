#include "cli/policy/audit.h"

#include "cli/command/nearest.h"
#include "cli/command/part.h"
#include "cli/policy/key_texts.h"
#include "cli/policy/policy_value.h"
#include "core/policies.h"

#include <algorithm>
#include <set>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

/// A rule that changes nothing, since another speaks of the same application first.
struct Shadow {
    std::string_view key;
    std::string_view first;
    std::string_view why;
};

constexpr Shadow shadows[] {
    { policy::blockedLaunch.key, policy::hidden.key, "is hidden, and so doesn't open anyway" },
    { policy::requireAuth.key, policy::hidden.key, "is hidden, and so doesn't open after authentication either" },
    { policy::requireAuth.key, policy::blockedLaunch.key,
        "is blocked: it asks for authentication, and then doesn't open" },
    { policy::mutedNotifications.key, policy::blockedNotifications.key, "doesn't notify at all" },
    { policy::mutedNotifications.key, policy::hidden.key, "is hidden, and so doesn't notify at all" },
    { policy::blockedNotifications.key, policy::hidden.key, "is hidden, and so doesn't notify anyway" },
};

class Audit {
public:
    Audit(const PolicyValues& values, const std::vector<KnownApplication>& installed)
        : values_(values)
    {
        for (const KnownApplication& application : installed)
            installed_.insert(application.identifier);
    }

    std::vector<Finding> findings() &&
    {
        for (const auto& [key, value] : values_.domain().items())
            lookAt(key, value);
        for (const Shadow& shadow : shadows)
            for (const std::string& application : listed(shadow.key))
                if (listed(shadow.first).contains(application))
                    add("shadowed", std::string(shadow.key), application,
                        application + " " + std::string(shadow.why) + " (" + std::string(shadow.first) + ")");
        lookAtRedirects();
        lookAtKeptAlive();
        if (flag(preference::everyCacheClears))
            for (const std::string& application : listed(policy::autoClear.key))
                add("shadowed", std::string(policy::autoClear.key), application,
                    "the caches of all applications are cleared already (GlobalAutoClearCacheEnabled)");
        for (const std::string& application : textsOf(values_.mute()))
            lookForApplication("mute", application);
        for (const auto& [application, level] : values_.brightness().items()) {
            lookForApplication("brightness", application);
            if (!level.is_number() || level < 0 || level > 1)
                add("out-of-range", "brightness", application,
                    "the brightness of " + application + " isn't " + std::string(expectedPart));
        }
        return std::move(findings_);
    }

private:
    void add(std::string kind, std::string key, std::string application, std::string text)
    {
        findings_.push_back({ std::move(kind), std::move(key), std::move(application), std::move(text) });
    }

    static std::set<std::string> textsOf(const Json& list)
    {
        std::set<std::string> texts;
        if (list.is_array())
            for (const Json& item : list)
                if (item.is_string())
                    texts.insert(item.get<std::string>());
        return texts;
    }

    std::set<std::string> listed(std::string_view key) const
    {
        return textsOf(values_.domain().value(std::string(key), Json()));
    }

    bool flag(std::string_view key) const { return values_.domain().value(std::string(key), Json()) == true; }

    void lookForApplication(const std::string& key, const std::string& application)
    {
        if (!installed_.empty() && !installed_.contains(application))
            add("gone", key, application, "no application here is called " + application);
    }

    void lookAt(const std::string& key, const Json& value)
    {
        const PreferenceKey* const row = preferenceKey(key);
        if (!row) {
            std::vector<std::string> names;
            for (const PreferenceKey& known : preferenceKeys())
                names.emplace_back(known.name);
            const auto meant = nearest(key, names);
            return add(
                "unknown-key", key, "", "AppLedger has no key " + key + (meant ? "; the nearest is " + *meant : ""));
        }
        if (const auto wanted = valueProblem(*row, value)) {
            PreferenceKey ofAnyValue = *row;
            ofAnyValue.range = {};
            const bool isOfType = !valueProblem(ofAnyValue, value);
            add(isOfType ? "out-of-range" : "wrong-type", key, "", key + " takes " + *wanted);
        }
        if (isStateOfThePhone(key))
            return;
        if (row->isPrefix)
            lookForApplication(key, key.substr(std::min(row->name.size(), key.size())));
        if (row->type == PreferenceType::IdentifierList) {
            for (const std::string& application : textsOf(value))
                lookForApplication(key, application);
            if (value.is_array() && textsOf(value).size() < value.size())
                add("without-effect", key, "", key + " lists something twice, or something that is no text");
        } else if (row->type == PreferenceType::NumberTable || row->type == PreferenceType::StringTable) {
            for (const auto& [application, entry] : value.items())
                lookForApplication(key, application);
        }
    }

    std::set<std::string> withPrefix(std::string_view prefix) const
    {
        std::set<std::string> applications;
        for (const auto& [key, value] : values_.domain().items())
            if (key.starts_with(prefix) && value == true)
                applications.insert(key.substr(prefix.size()));
        return applications;
    }

    void lookAtRedirects()
    {
        const auto confined = withPrefix(redirectKey::forbiddenSource);
        const auto ofKey
            = [](std::string_view prefix, const std::string& application) { return std::string(prefix) + application; };
        for (const std::string& source : confined) {
            for (const std::string_view weaker :
                { redirectKey::forbiddenSourceForAppStore, redirectKey::forbiddenSourceForSafari })
                if (flag(ofKey(weaker, source)))
                    add("shadowed", ofKey(weaker, source), source, source + " opens no other application already");
            if (!listed(ofKey(redirectKey::forbiddenDestinations, source)).empty())
                add("shadowed", ofKey(redirectKey::forbiddenDestinations, source), source,
                    source + " opens no other application already");
        }
        for (const auto& [key, value] : values_.domain().items())
            if (key.starts_with(redirectKey::forbiddenDestinations)) {
                const std::string source = key.substr(redirectKey::forbiddenDestinations.size());
                for (const std::string& destination : textsOf(value))
                    if (listed(ofKey(redirectKey::allowedSources, destination)).contains(source))
                        add("shadowed", key, source,
                            "an exception lets " + source + " open " + destination + " ("
                                + ofKey(redirectKey::allowedSources, destination) + ")");
            }
        for (const std::string_view prefix : { redirectKey::lenientSource, redirectKey::simulatedSource })
            for (const std::string& source : withPrefix(prefix))
                if (!isRefusedAnything(source, confined))
                    add("without-effect", ofKey(prefix, source), source, "nothing is forbidden to " + source);
    }

    /// Also by what forbids a destination to everybody, and hides it.
    bool isRefusedAnything(const std::string& source, const std::set<std::string>& confined) const
    {
        const auto has = [&](std::string_view prefix) { return flag(std::string(prefix) + source); };
        return confined.contains(source) || has(redirectKey::forbiddenSourceForAppStore)
            || has(redirectKey::forbiddenSourceForSafari)
            || !listed(std::string(redirectKey::forbiddenDestinations) + source).empty()
            || !withPrefix(redirectKey::forbiddenDestination).empty() || !listed(policy::hidden.key).empty();
    }

    void lookAtKeptAlive()
    {
        const auto kept = listed("ALImmortalForegroundApps");
        const bool isOff = values_.domain().value("ALImmortalEnabled", Json(true)) == false;
        if (isOff)
            for (const std::string& application : kept)
                add("without-effect", "ALImmortalForegroundApps", application,
                    application + " is not kept running while ALImmortalEnabled is false");
        for (const std::string& application : listed("ALImmortalNotifApps"))
            if (!kept.contains(application))
                add("without-effect", "ALImmortalNotifApps", application, application + " is not kept running");
    }

    const PolicyValues& values_;
    std::set<std::string> installed_;
    std::vector<Finding> findings_;
};

} // namespace

std::vector<Finding> auditOf(const PolicyValues& values, const std::vector<KnownApplication>& installed)
{
    return Audit(values, installed).findings();
}

} // namespace cli
