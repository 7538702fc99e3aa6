#include "allocation_count.h"

#include "launch/redirect_decision.h"
#include "platform/foundation/values.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Whether one application may open another, with rules about 1,000 applications and 10,000 pairs: the decision,
/// beside the same steps on the standard library's sets of strings. Time and allocations are those of one
/// decision.

using namespace appledger;
using namespace platform;

namespace {

constexpr std::size_t applicationCount = 1000;
constexpr std::size_t pairsPerApplication = 5; // in each of the two directions

std::string application(std::size_t index)
{
    return "com.example.publisher" + std::to_string(index % 97) + ".application" + std::to_string(index);
}

/// Transitions that differ, so that no cache of the processor holds a single path.
struct Traffic {
    std::vector<std::string> sources;
    std::vector<std::string> destinations;
    std::vector<std::string> labels;

    std::size_t size() const { return sources.size(); }
};

enum class Kind { Passing, Declined };

/// Half of the passing ones are between applications that rules speak about, and go to others than those.
Traffic traffic(Kind kind)
{
    Traffic made;
    for (std::size_t index = 0; index < 4096; ++index) {
        const std::size_t source = kind == Kind::Passing ? (index * 7919) % applicationCount * 2 + 1
                                                         : (index * 7919) % (applicationCount / 2) * 2;
        const std::size_t destination = 2 * applicationCount + (index * 104729) % applicationCount;
        made.sources.push_back(application(source));
        made.destinations.push_back(application(destination));
        made.labels.push_back(
            "OpenApplication(" + made.destinations.back() + ")ForRequester(" + made.sources.back() + ")");
    }
    return made;
}

/// Of the 1,000 applications those with even numbers may open nothing; all have pairs, a pause and a simulation.
id preferences()
{
    std::vector<std::pair<id, id>> pairs;
    const auto add = [&pairs](std::string_view prefix, const std::string& subject, id value) {
        pairs.emplace_back(string(std::string(prefix) + subject), std::move(value));
    };
    for (std::size_t index = 0; index < applicationCount; ++index) {
        const std::string subject = application(index);
        if (index % 2 == 0)
            add(redirectKey::forbiddenSource, subject, boolean(true));
        add(redirectKey::forbiddenDestination, subject, boolean(true));
        add(redirectKey::forbiddenSourceForAppStore, subject, boolean(true));
        add(redirectKey::forbiddenSourceForSafari, subject, boolean(true));
        add(redirectKey::lenientSource, subject, boolean(true));
        add(redirectKey::simulatedSource, subject, boolean(index % 3 == 0));
        std::vector<id> others;
        for (std::size_t other = 0; other < pairsPerApplication; ++other)
            others.push_back(string(application(index + 1 + other)));
        add(redirectKey::allowedSources, subject, array(others));
        add(redirectKey::forbiddenDestinations, subject, array(others));
    }
    return dictionary(std::move(pairs));
}

struct Policies {
    Policies()
    {
        for (std::size_t index = 0; index < applicationCount; ++index) {
            launches = launches.with(application(index), 95);
            hiddenTexts.push_back(application(10 * applicationCount + index));
        }
        hiddenViews.assign(hiddenTexts.begin(), hiddenTexts.end());
        hiddenIndex = StringSet(hiddenViews);
    }

    RedirectPolicies policies() const { return { sets.rules(), IdentifierList(hiddenViews, &hiddenIndex), &launches }; }

    RedirectRuleSets sets { preferences() };
    LaunchStamps launches;
    std::vector<std::string> hiddenTexts;
    std::vector<std::string_view> hiddenViews;
    StringSet hiddenIndex;
};

template <class Decide> void measure(benchmark::State& state, Kind kind, const Decide& decide)
{
    const Traffic made = traffic(kind);
    std::size_t next = 0;
    std::size_t passed = 0;
    const std::size_t before = allocationCount();
    for (auto _ : state) {
        passed += decide(made.sources[next], made.destinations[next], made.labels[next]);
        next = (next + 1) % made.size();
    }
    state.counters["allocations"]
        = static_cast<double>(allocationCount() - before) / static_cast<double>(state.iterations());
    state.counters["passed"] = static_cast<double>(passed) / static_cast<double>(state.iterations());
}

void decision(benchmark::State& state, Kind kind)
{
    static const Policies world;
    const RedirectPolicies policies = world.policies();
    measure(
        state, kind, [&policies](const std::string& source, const std::string& destination, const std::string& label) {
            const Transition transition { .eventLabel = label,
                .sourceEntity = SourceEntity { source, SourceAction::OpenUrl },
                .destination = destination };
            return decideRedirect(transition, policies, 100).outcome == RedirectOutcome::Pass;
        });
}

/// The steps of the decision that this traffic takes, on the standard library's sets.
class Peer {
public:
    Peer()
    {
        for (std::size_t index = 0; index < applicationCount; ++index) {
            const std::string subject = application(index);
            if (index % 2 == 0)
                sources_.insert(subject);
            destinations_.insert(subject);
            lenient_.insert(subject);
            if (index % 3 == 0)
                simulated_.insert(subject);
            stamps_[subject] = 95;
            hidden_.insert(application(10 * applicationCount + index));
            for (std::size_t other = 0; other < pairsPerApplication; ++other) {
                allowed_.insert(application(index + 1 + other) + "->" + subject);
                forbidden_.insert(subject + "->" + application(index + 1 + other));
            }
        }
    }

    bool passes(const std::string& source, const std::string& destination, const std::string& label) const
    {
        if (label.find("ActivateFromBreadcrumb") == std::string::npos
            && (label.find("OpenApplication") == std::string::npos || label.find("ForRequester") == std::string::npos))
            return true;
        if (source == destination)
            return true;
        if (hidden_.contains(source) || hidden_.contains(destination))
            return simulated_.contains(source);
        if (lenient_.contains(source))
            if (const auto stamp = stamps_.find(source); stamp != stamps_.end() && std::abs(100 - stamp->second) > 10)
                return true;
        const std::string pair = source + "->" + destination;
        if (allowed_.contains(pair))
            return true;
        const bool refused
            = sources_.contains(source) || destinations_.contains(destination) || forbidden_.contains(pair);
        if (refused && simulated_.contains(source))
            return false; // in the background
        return !refused;
    }

private:
    using Set = std::unordered_set<std::string>;
    Set sources_, destinations_, lenient_, simulated_, hidden_, allowed_, forbidden_;
    std::unordered_map<std::string, double> stamps_;
};

void peer(benchmark::State& state, Kind kind)
{
    static const Peer world;
    measure(state, kind, [](const std::string& source, const std::string& destination, const std::string& label) {
        return world.passes(source, destination, label);
    });
}

BENCHMARK_CAPTURE(decision, passing, Kind::Passing);
BENCHMARK_CAPTURE(peer, passing, Kind::Passing);
BENCHMARK_CAPTURE(decision, declined, Kind::Declined);
BENCHMARK_CAPTURE(peer, declined, Kind::Declined);

} // namespace
