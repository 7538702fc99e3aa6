#include "cli/command/output.h"
#include "cli/history/killed_at_step.h"
#include "cli/history/policy_model.h"
#include "cli/history/policy_session.h"
#include "cli/policy/policy_set.h"
#include "cli/policy/policy_set_file.h"
#include "cli/policy/profiles.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

/// Random sequences of changes, exports, imports, undos and profile switches: the policies are what a simple model
/// says, also when a writer is killed between any two of its steps.

namespace cli {

namespace {

using Json = nlohmann::json;
using State = PolicyModel::State;

constexpr const char* applications[] { "com.example.a", "com.example.b", "com.example.c", "d" };
constexpr const char* lists[] { "ALBlockedLaunchApps", "ALHiddenApps", "CustomBlockedApplications/d" };
constexpr const char* flags[] { "ALImmortalEnabled", "IsBlockedFromBeingLaunched/com.example.a" };
constexpr const char* profileNames[] { "day", "night" };
constexpr const char* mute = "mute";
constexpr const char* brightness = "brightness";
constexpr const char* badges = "ALCustomBadges";

ValueName nameOf(const std::string& key)
{
    if (key == mute)
        return ValueName::muteList();
    return key == brightness ? ValueName::brightnessTable() : ValueName::ofKey(key);
}

/// The files have no way to tell an empty list from none.
State normal(State state)
{
    for (const char* const file : { mute, brightness })
        if (state.contains(file) && state[file].empty())
            state.erase(file);
    return state;
}

State stateOfDevice()
{
    const PolicyValues values = PolicyValues::ofDevice();
    EXPECT_EQ(values.problem(), "");
    State state;
    for (const auto& [key, value] : values.domain().items())
        state[key] = value;
    if (!values.mute().is_null())
        state[mute] = values.mute();
    if (!values.brightness().is_null())
        state[brightness] = values.brightness();
    return normal(state);
}

Json setOfState(const State& state)
{
    Json set = emptySet();
    for (const auto& [key, value] : state)
        (key == mute || key == brightness ? set[key] : set["domain"][key]) = value;
    return set;
}

State stateOfSet(const Json& set)
{
    State state;
    for (const auto& [key, value] : set["domain"].items())
        state[key] = value;
    state[mute] = set["mute"];
    state[brightness] = set["brightness"];
    return normal(state);
}

/// One thing that a verb does: to the model, and through a session.
struct Step {
    std::string name;
    std::function<void(PolicyModel& model)> inModel;
    std::function<void(PolicySession& session)> inSession;
};

class Sequence {
public:
    explicit Sequence(unsigned seed)
        : random_(seed)
    {
        char folder[] = "/dev/shm/appledger-sequence.XXXXXX";
        root_ = ::mkdtemp(folder);
        directory_.emplace(root_);
    }
    ~Sequence()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

    void run()
    {
        const int steps = 2 + pick(8);
        for (int index = 0; index < steps && !testing::Test::HasFailure(); ++index) {
            const Step step = nextStep();
            done_ += step.name + "\n";
            SCOPED_TRACE(done_);
            if (pick(4) == 0)
                runKilled(step);
            else
                runWhole(step);
            EXPECT_EQ(stateOfDevice(), normal(model_.state()));
            EXPECT_EQ(profilesOfDevice(), model_.profiles());
        }
    }

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    template <class T, std::size_t N> const T& oneOf(const T (&all)[N]) { return all[pick(N)]; }

    std::unique_ptr<PolicySession> session()
    {
        std::string problem;
        auto opened = PolicySession::open(*directory_, problem);
        EXPECT_EQ(problem, "");
        return opened;
    }

    void runWhole(const Step& step)
    {
        if (const auto opened = session())
            step.inSession(*opened);
        step.inModel(model_);
        length_ = lengthOfHistory();
    }

    PolicyModel::Profiles profilesOfDevice() const
    {
        std::string problem;
        PolicyModel::Profiles profiles;
        for (const auto& [name, set] : readProfiles(*directory_, problem))
            profiles[name] = stateOfSet(set);
        EXPECT_EQ(problem, "");
        return profiles;
    }

    std::size_t lengthOfHistory() const
    {
        std::string problem;
        return readHistory(*directory_, problem).transactions().size();
    }

    /// What it has come to shows once the next one has finished it: all of it, or nothing.
    void runKilled(const Step& step)
    {
        const int at = 1 + pick(60);
        done_ += "  killed at " + std::to_string(at) + "\n";
        const bool isKilled = runKilledAtStep(at, [&] {
            if (const auto opened = session())
                step.inSession(*opened);
        });
        session();
        PolicyModel after = model_;
        step.inModel(after);
        const bool isWhole = stateOfDevice() == normal(after.state()) && profilesOfDevice() == after.profiles();
        EXPECT_TRUE(isWhole || isKilled);
        // Where both states are the same, the history says which it is.
        const bool isKept = lengthOfHistory() > length_;
        if (isWhole && (isKept || after.state() != model_.state() || after.profiles() != model_.profiles()))
            model_ = std::move(after);
        length_ = lengthOfHistory();
    }

    Step edit(const std::string& name, const std::string& key, Json value)
    {
        return { name + " " + key + " " + value.dump(),
            [key, value](PolicyModel& model) {
                State state = model.state();
                if (value.is_null())
                    state.erase(key);
                else
                    state[key] = value;
                model.change(normal(state));
            },
            [key, value](PolicySession& session) {
                session.want(nameOf(key), value);
                EXPECT_EQ(session.commit({ .verb = "edit" }).problem, "");
            } };
    }

    Json present(const std::string& key) const
    {
        const auto found = model_.state().find(key);
        return found == model_.state().end() ? Json() : found->second;
    }

    Step toggle(const std::string& key)
    {
        const std::string application = oneOf(applications);
        Json list = present(key).is_null() ? Json::array() : present(key);
        const auto found = std::find(list.begin(), list.end(), Json(application));
        if (found == list.end())
            list.push_back(application);
        else
            list.erase(found);
        return edit("toggle", key, list);
    }

    Step entry(const std::string& key, Json value)
    {
        Json table = present(key).is_null() ? Json::object() : present(key);
        const std::string application = oneOf(applications);
        if (pick(3) == 0)
            table.erase(application);
        else
            table[application] = std::move(value);
        return edit("entry", key, table);
    }

    Step back()
    {
        return { "undo",
            [](PolicyModel& model) {
                if (model.canUndo())
                    model.undo();
            },
            [](PolicySession& session) { session.undo("undo"); } };
    }

    Step again()
    {
        return { "redo",
            [](PolicyModel& model) {
                if (model.canRedo())
                    model.redo();
            },
            [](PolicySession& session) { session.redo("redo"); } };
    }

    /// Takes over a set that was exported before, by way of a file's bytes.
    Step import(const Json& set, SetMode mode)
    {
        const std::string bytes = bytesOfSet(set, pick(2) == 0 ? "file.json" : "file.plist");
        return { mode == SetMode::Merge ? "merge" : "replace",
            [set, mode](PolicyModel& model) {
                State next = stateOfSet(set);
                if (mode == SetMode::Merge) {
                    State merged = model.state();
                    for (const auto& [key, value] : next) {
                        if (value.is_array() && merged.contains(key)) {
                            for (const Json& item : value)
                                if (std::find(merged[key].begin(), merged[key].end(), item) == merged[key].end())
                                    merged[key].push_back(item);
                        } else if (value.is_object() && merged.contains(key)) {
                            merged[key].update(value);
                        } else {
                            merged[key] = value;
                        }
                    }
                    next = merged;
                }
                model.change(normal(next));
            },
            [bytes, mode](PolicySession& session) {
                const SetReading reading = setFromBytes(bytes);
                ASSERT_EQ(reading.problem, "");
                wantSet(session, reading.set, mode);
                EXPECT_EQ(session.commit({ .verb = "import" }).problem, "");
            } };
    }

    Step reset()
    {
        const std::string application = oneOf(applications);
        return { "reset " + application,
            [application](PolicyModel& model) {
                State state;
                for (auto [key, value] : model.state()) {
                    if (key.ends_with("/" + application))
                        continue;
                    if (value.is_array())
                        value.erase(std::remove(value.begin(), value.end(), Json(application)), value.end());
                    if (value.is_object())
                        value.erase(application);
                    state[key] = value;
                }
                model.change(normal(state));
            },
            [application](PolicySession& session) {
                wantReset(session, { application });
                EXPECT_EQ(session.commit({ .verb = "reset" }).problem, "");
            } };
    }

    Step save(const std::string& name)
    {
        return { "profile save " + name, [name](PolicyModel& model) { model.save(name); },
            [this, name](PolicySession& session) {
                std::string problem;
                auto profiles = readProfiles(*directory_, problem);
                profiles[name] = policySetOf(session.values());
                EXPECT_EQ(problem + writeProfiles(*directory_, profiles), "");
            } };
    }

    Step use(const std::string& name)
    {
        return { "profile use " + name, [name](PolicyModel& model) { model.change(normal(model.profiles().at(name))); },
            [this, name](PolicySession& session) {
                std::string problem;
                wantSet(session, readProfiles(*directory_, problem).at(name), SetMode::Replace);
                EXPECT_EQ(session.commit({ .verb = "profile use" }).problem, "");
            } };
    }

    Step switchProfile()
    {
        const std::string name = oneOf(profileNames);
        return model_.profiles().contains(name) && pick(3) != 0 ? use(name) : save(name);
    }

    Step nextStep()
    {
        if (pick(4) == 0) {
            exported_.push_back(setOfState(model_.state()));
        }
        switch (pick(14)) {
        case 0:
        case 1:
        case 2:
            return toggle(oneOf(lists));
        case 3:
            return toggle(mute);
        case 4:
            return entry(brightness, pick(2) == 0 ? 0.5 : 0.25);
        case 5:
            return entry(badges, pick(2) == 0 ? Json(pick(9)) : Json(0.5));
        case 6:
            return edit("flag", oneOf(flags), pick(3) == 0 ? Json() : Json(pick(2) == 0));
        case 7:
        case 8:
            return back();
        case 9:
            return again();
        case 10:
            return reset();
        case 11:
        case 12:
            return switchProfile();
        default:
            if (exported_.empty())
                return edit("color", "RunningIndicatorColor", "#112233");
            return import(exported_[static_cast<std::size_t>(pick(static_cast<int>(exported_.size())))],
                pick(2) == 0 ? SetMode::Merge : SetMode::Replace);
        }
    }

    std::mt19937 random_;
    std::string root_;
    std::optional<phone::PhoneDirectory> directory_;
    PolicyModel model_;
    std::vector<Json> exported_;
    std::string done_;
    std::size_t length_ = 0; ///< of the history
};

unsigned numberFrom(const char* variable, unsigned otherwise)
{
    const char* const text = std::getenv(variable);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

} // namespace

// APPLEDGER_SEQUENCES and APPLEDGER_SEED try more, and others.
TEST(PolicySequences, AreWhatASimpleModelSaysAlsoWithAKillBetweenAnyTwoSteps)
{
    const unsigned count = numberFrom("APPLEDGER_SEQUENCES", 60);
    const unsigned seed = numberFrom("APPLEDGER_SEED", 20261);
    for (unsigned index = 0; index < count && !HasFailure(); ++index) {
        SCOPED_TRACE("seed " + std::to_string(seed + index));
        Sequence(seed + index).run();
    }
}

} // namespace cli
