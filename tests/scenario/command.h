#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace scenario {

using Json = nlohmann::json;

/// What a run of the command gave.
struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;

    /// The one object of --json.
    Json json() const { return Json::parse(output); }
};

/// Runs a program to its end.
Outcome runProgram(std::vector<std::string> arguments);

/// A phone of real processes in a directory of its own, driven by `appledger`. It is down and gone when the
/// test ends.
class Phone {
public:
    Phone();
    ~Phone();
    Phone(const Phone&) = delete;
    Phone& operator=(const Phone&) = delete;

    Outcome run(std::vector<std::string> words) const;

    /// With --json; the answer's object. Fails the test when the command ends with another status, and where the object
    /// doesn't keep to docs/json.md.
    Json answer(std::vector<std::string> words, int status = 0) const;

    const std::string& root() const noexcept { return root_; }
    std::string preferenceFile() const;
    int pid(const std::string& process) const;

private:
    std::string root_;
};

} // namespace scenario
