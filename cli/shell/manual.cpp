#include "cli/shell/manual.h"

#include "cli/command/command_line.h"
#include "cli/policy/features.h"
#include "cli/policy/key_texts.h"
#include "cli/policy/policy_value.h"
#include "core/preference_domain.h"

namespace cli {

using namespace appledger;

namespace {

/// As the typesetter takes a text for what it is: a hyphen as one that may be copied, a line that begins with a dot.
std::string plain(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result.starts_with('.') || result.starts_with('\'') ? "\\&" + result : result;
}

std::string title(std::string_view name, int section, std::string_view what)
{
    return ".TH " + plain(name) + " " + std::to_string(section)
        + " " APPLEDGER_VERSION_DATE " \"AppLedger " APPLEDGER_VERSION "\" \"AppLedger\"\n.SH NAME\n" + plain(name)
        + " \\- " + plain(what) + "\n";
}

std::string usageOf(const VerbDetails& verb)
{
    std::string usage = "\\fBappledger " + plain(verb.words) + "\\fR";
    for (const ArgumentDetails& argument : verb.arguments) {
        std::string shown
            = argument.isOption() ? "\\fB" + plain(argument.name) + "\\fR" : "\\fI" + plain(argument.name) + "\\fR";
        if (argument.isOption() && !argument.isFlag)
            shown += " \\fI" + plain(argument.value) + "\\fR";
        shown += argument.takesSeveral && !argument.isOption() ? "..." : "";
        usage += argument.isRequired ? " " + shown : " [" + shown + "]";
    }
    return usage;
}

std::string describe(const ArgumentDetails& argument)
{
    std::string text = argument.description;
    if (!argument.words.empty() && argument.words.size() < 12) {
        text += text.empty() ? "one of " : "; one of ";
        for (std::size_t index = 0; index < argument.words.size(); ++index)
            text += (index == 0 ? "" : ", ") + argument.words[index];
    }
    return text;
}

} // namespace

std::string commandManual()
{
    std::string page = title("appledger", 1, "control, application by application, what a simulated phone does");
    page += ".SH SYNOPSIS\n\\fBappledger\\fR [\\fB\\-\\-root\\fR \\fIDIR\\fR] [\\fB\\-\\-json\\fR] "
            "[\\fB\\-\\-verbose\\fR] "
            "\\fIVERB\\fR ...\n"
            ".SH DESCRIPTION\nRuns a phone of real processes in a directory, and reads, changes and explains what it "
            "does "
            "for each application. An application is given by its identifier, its name, or a part of its name that no "
            "other has.\n.SH VERBS\n";
    for (const VerbDetails& verb : everyVerb()) {
        if (verb.isHidden)
            continue;
        page += ".TP\n" + usageOf(verb) + "\n" + plain(verb.description) + ".\n";
        for (const ArgumentDetails& argument : verb.arguments)
            if (const std::string text = describe(argument); !text.empty())
                page += ".br\n\\fI" + plain(argument.name) + "\\fR: " + plain(text) + "\n";
        page += ".br\nExample: " + plain(verb.example()) + "\n";
    }
    page
        += ".SH ENVIRONMENT\n.TP\n.B APPLEDGER_ROOT\nThe directory of the phone, where \\fB\\-\\-root\\fR names none.\n"
           ".SH EXIT STATUS\n0: done; a launch that the phone refused is an answer too. 1: refused or not found. 2: "
           "bad "
           "usage.\n.SH SEE ALSO\n.BR appledger\\-policy (7)\n";
    return page;
}

std::string policyManual()
{
    std::string page = title("appledger-policy", 7, "the policies of a phone, and where they are kept");
    page += ".SH DESCRIPTION\nPolicies are the keys of one preference domain, the file \\fI" + plain(preferenceFile)
        + "\\fR of the phone, and two files beside it for mute and brightness. \\fBappledger policy\\fR changes them "
          "in "
          "words or by key; each change is in the history, which \\fBappledger policy undo\\fR takes back.\n.SH "
          "WORDS\n";
    for (const Feature* const feature : features())
        page += ".TP\n\\fBappledger " + plain(feature->onVerb) + "\\fR, \\fBappledger " + plain(feature->offVerb)
            + "\\fR\n" + plain(feature->onDescription) + " (" + plain(feature->key) + ").\n";
    page += ".PP\nWhat \\fBpolicy hide\\fR has hidden, \\fBpolicy unhide\\fR has back: \\fBpolicy show\\fR changes "
            "nothing, it tells what holds for an application.\n.SH KEYS\n";
    for (const PreferenceKey& key : preferenceKeys()) {
        page += ".TP\n\\fB" + plain(key.name) + "\\fR" + (key.isPrefix ? "\\fIidentifier\\fR" : "") + "\n"
            + plain(keyText(key)) + ". It takes " + plain(allowedValues(key)) + "; the default is "
            + plain(key.defaultText) + ".";
        std::string readers;
        for (const std::string& reader : readersOf(key))
            readers += (readers.empty() ? "" : ", ") + reader;
        page += " Read by " + plain(readers) + (key.reloadName.empty() ? " at each use" : "") + ".";
        page += key.notification.empty() ? "\n" : " A change is told by " + plain(key.notification) + ".\n";
    }
    page += ".SH SEE ALSO\n.BR appledger (1)\n";
    return page;
}

} // namespace cli
