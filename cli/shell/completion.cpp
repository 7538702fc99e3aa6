#include "cli/command/application_names.h"
#include "cli/command/arguments.h"
#include "cli/command/command_line.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/profiles.h"
#include "cli/shell/manual.h"
#include "core/preference_domain.h"
#include "phone/process/process_definition.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

/// What may come next on a line that somebody is typing. It reads files and starts nothing.

namespace cli {

namespace {

struct Candidate {
    std::string word;
    std::string description {};
};

/// A line up to the word that is being typed, which is its last and may be empty.
class Line {
public:
    explicit Line(std::vector<std::string> words)
    {
        if (words.empty())
            words.emplace_back();
        current_ = std::move(words.back());
        words.pop_back();
        for (std::size_t index = 0; index < words.size(); ++index) {
            if (words[index] == "--root" && index + 1 < words.size())
                root_ = words[++index];
            else
                given_.push_back(std::move(words[index]));
        }
    }

    const std::vector<std::string>& given() const noexcept { return given_; }
    const std::string& current() const noexcept { return current_; }
    const std::string& root() const noexcept { return root_; } ///< "" for the usual one

private:
    std::vector<std::string> given_;
    std::string current_;
    std::string root_;
};

std::vector<std::string> split(std::string_view words)
{
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= words.size();) {
        const std::size_t end = std::min(words.find(' ', start), words.size());
        parts.emplace_back(words.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

bool beginsWith(const std::vector<std::string>& words, const std::vector<std::string>& beginning)
{
    return beginning.size() <= words.size() && std::equal(beginning.begin(), beginning.end(), words.begin());
}

class Completion {
public:
    Completion(Line line, const phone::PhoneDirectory& directory)
        : line_(std::move(line))
        , directory_(line_.root().empty() ? directory : phone::PhoneDirectory(absolute(line_.root())))
        , verbs_(everyVerb())
    {
    }

    std::vector<Candidate> candidates()
    {
        std::vector<std::string> words; // of the line, without options
        std::copy_if(line_.given().begin(), line_.given().end(), std::back_inserter(words),
            [](const std::string& word) { return !word.starts_with('-'); });
        const VerbDetails* verb = nullptr;
        for (const VerbDetails& each : verbs_)
            if (!each.isHidden && beginsWith(words, split(each.words))
                && (!verb || each.words.size() > verb->words.size()))
                verb = &each;
        addVerbs(words);
        if (verb)
            addArguments(*verb, words.size() - split(verb->words).size());
        if (line_.current().starts_with('-'))
            for (const char* const option : { "--json", "--root", "--verbose", "--help" })
                add(option, "");
        return std::move(found_);
    }

private:
    static std::string absolute(const std::string& path)
    {
        std::error_code error;
        return std::filesystem::absolute(path, error).lexically_normal().string();
    }

    void add(const std::string& word, const std::string& description)
    {
        if (word.starts_with(line_.current()))
            found_.push_back({ word, description });
    }

    /// Groups and verbs that go on where the words end.
    void addVerbs(const std::vector<std::string>& words)
    {
        std::set<std::string> seen;
        for (const VerbDetails& verb : verbs_) {
            const auto parts = split(verb.words);
            if (verb.isHidden || parts.size() <= words.size() || !beginsWith(parts, words)
                || !seen.insert(parts[words.size()]).second)
                continue;
            const bool isVerb = parts.size() == words.size() + 1;
            add(parts[words.size()], isVerb ? verb.description : groupText(words, parts[words.size()]));
        }
    }

    static std::string groupText(const std::vector<std::string>& words, const std::string& last)
    {
        std::string group;
        for (const std::string& word : words)
            group += word + " ";
        return groupDescription(group + last);
    }

    void addArguments(const VerbDetails& verb, std::size_t count)
    {
        if (!line_.given().empty() && line_.given().back().starts_with('-'))
            for (const ArgumentDetails& argument : verb.arguments)
                if (argument.name == line_.given().back() && !argument.isFlag)
                    return addValues(argument);
        if (line_.current().starts_with('-')) {
            for (const ArgumentDetails& argument : verb.arguments)
                if (argument.isOption())
                    add(argument.name, argument.description);
            return;
        }
        // What options have taken is counted among the words.
        for (const ArgumentDetails& argument : verb.arguments)
            if (argument.isOption() && !argument.isFlag && count > 0
                && std::find(line_.given().begin(), line_.given().end(), argument.name) != line_.given().end())
                --count;
        std::size_t place = 0;
        for (const ArgumentDetails& argument : verb.arguments) {
            if (argument.isOption())
                continue;
            if (place++ == count || argument.takesSeveral)
                return addValues(argument);
        }
    }

    void addValues(const ArgumentDetails& argument)
    {
        for (const std::string& word : argument.words)
            add(word, "");
        if (argument.kind == ArgumentKind::Application)
            return addApplications();
        for (const Candidate& candidate : completionsOf(argument.kind, directory_))
            add(candidate.word, candidate.description);
    }

    /// By the beginning of the identifier, or by a part of the name.
    void addApplications()
    {
        for (const KnownApplication& application : knownApplications(directory_)) {
            const bool isMeant = application.identifier.starts_with(line_.current())
                || meantApplication({ application }, line_.current()).isKnown;
            if (isMeant)
                found_.push_back({ application.identifier, application.name });
        }
    }

    static std::vector<Candidate> completionsOf(ArgumentKind kind, const phone::PhoneDirectory& directory)
    {
        std::vector<Candidate> candidates;
        std::string problem;
        switch (kind) {
        case ArgumentKind::Key:
            for (const appledger::PreferenceKey& key : appledger::preferenceKeys())
                candidates.push_back({ std::string(key.name), std::string(key.defaultText) });
            break;
        case ArgumentKind::Process:
            for (const phone::ProcessDefinition& process : phone::processDefinitions())
                candidates.push_back({ std::string(process.name), std::string(process.bundleIdentifier) });
            break;
        case ArgumentKind::Profile:
            for (const auto& [name, set] : readProfiles(directory, problem))
                candidates.push_back({ name });
            break;
        case ArgumentKind::Application:
        case ArgumentKind::File:
        case ArgumentKind::Other:
            break;
        }
        return candidates;
    }

    const Line line_;
    const phone::PhoneDirectory directory_;
    const std::vector<VerbDetails> verbs_;
    std::vector<Candidate> found_;
};

Action complete(Arguments& arguments)
{
    const auto words = std::make_shared<std::vector<std::string>>();
    arguments.add("WORD", *words, "the line behind \"appledger\", the word that is being typed last");
    return [words](const phone::PhoneDirectory& directory) {
        std::string text;
        for (const Candidate& candidate : Completion(Line(*words), directory).candidates())
            text += onOneLine(candidate.word) + "  " + onOneLine(candidate.description) + "\n";
        if (!text.empty())
            sayUsage(text, ExitStatus::Done);
        return ExitStatus::Done;
    };
}

Action manual(Arguments& arguments)
{
    const auto page = std::make_shared<Word>();
    arguments.add("PAGE", *page, "command or policies").required().oneOf({ "command", "policies" });
    return [page](const phone::PhoneDirectory&) {
        sayUsage(page->text() == "command" ? commandManual() : policyManual(), ExitStatus::Done);
        return ExitStatus::Done;
    };
}

constexpr VerbRow rows[] {
    { "complete", "what may come next on a line; for shells", complete, "", true },
    { "manual", "a page of the manual, as a typesetter reads it", manual, "", true },
};

} // namespace

extern const VerbRows completionVerbs { rows };

} // namespace cli
