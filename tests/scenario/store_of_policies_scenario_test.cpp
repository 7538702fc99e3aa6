#include "scenario/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sys/stat.h>
#include <thread>

/// What `appledger policy` acknowledges is kept, and what it can't keep or read it says.

namespace scenario {

namespace {

namespace fs = std::filesystem;

/// The command with its output somewhere, by way of the shell.
Outcome runTo(const Phone& phone, const std::string& words, const std::string& output)
{
    return runProgram(
        { "/bin/sh", "-c", std::string(APPLEDGER_COMMAND) + " --root " + phone.root() + " " + words + " >" + output });
}

void put(const std::string& path, const std::string& content)
{
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string get(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator(file), {} };
}

} // namespace

TEST(StoreOfPolicies, ManyWritersOfOneListLoseNothingAndBringNothingBack)
{
    const Phone phone;
    constexpr int writers = 5;
    constexpr int steps = 6;
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&phone, writer] {
            for (int step = 0; step < steps; ++step) {
                const std::string name = std::to_string(writer) + "." + std::to_string(step);
                EXPECT_EQ(phone.run({ "policy", "add", "ALBlockedLaunchApps", name }).status, 0);
                EXPECT_EQ(phone.run({ "policy", "mute", name }).status, 0);
                if (step % 2 == 0) {
                    EXPECT_EQ(phone.run({ "policy", "remove", "ALBlockedLaunchApps", name }).status, 0);
                    EXPECT_EQ(phone.run({ "policy", "unmute", name }).status, 0);
                }
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    std::set<std::string> expected;
    for (int writer = 0; writer < writers; ++writer)
        for (int step = 1; step < steps; step += 2)
            expected.insert(std::to_string(writer) + "." + std::to_string(step));
    EXPECT_EQ(
        phone.answer({ "policy", "list" })["policies"]["ALBlockedLaunchApps"].get<std::set<std::string>>(), expected);
    for (const std::string& name : expected)
        EXPECT_EQ(phone.answer({ "policy", "show", name })["policies"].value("mute", false), true) << name;
    EXPECT_FALSE(phone.answer({ "policy", "show", "0.0" })["policies"].contains("mute"));
}

TEST(StoreOfPolicies, ADamagedFileIsSaidByReadersAndSetAsideByAWriter)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", "a" });
    std::string damaged = get(phone.preferenceFile());
    damaged[3] = static_cast<char>(damaged[3] ^ 1);
    put(phone.preferenceFile(), damaged);
    for (const std::vector<std::string>& words :
        { std::vector<std::string> { "policy", "list" }, { "policy", "show", "a" }, { "explain", "launch", "a" } }) {
        const Outcome outcome = phone.run(words);
        EXPECT_EQ(outcome.status, 1) << words[1];
        EXPECT_NE(outcome.errors.find("can't be read"), std::string::npos) << outcome.errors;
        EXPECT_EQ(get(phone.preferenceFile()), damaged);
    }
    const Json changed = phone.answer({ "policy", "add", "ALBlockedLaunchApps", "b" });
    EXPECT_EQ(get(phone.root() + changed.value("setAside", "")), damaged);
    EXPECT_EQ(phone.answer({ "policy", "list" })["policies"]["ALBlockedLaunchApps"], Json::array({ "b" }));
    EXPECT_FALSE(phone.answer({ "policy", "add", "ALBlockedLaunchApps", "c" }).contains("setAside"));

    const std::string muteFile = fs::path(phone.preferenceFile()).parent_path() / "com.orbelix.appmute.plist";
    put(muteFile, "<plist><dict/></plist>");
    EXPECT_EQ(phone.run({ "policy", "show", "a" }).status, 1);
    EXPECT_EQ(
        get(phone.root() + phone.answer({ "policy", "mute", "a" }).value("setAside", "")), "<plist><dict/></plist>");
}

TEST(StoreOfPolicies, WhatCanNotBeWrittenIsRefusedAndLeftAsItIs)
{
    const Phone phone;
    const std::string file = phone.preferenceFile();
    const auto isRefused = [&phone](const std::string& reason) {
        const Outcome outcome = phone.run({ "policy", "add", "ALBlockedLaunchApps", "a" });
        EXPECT_EQ(outcome.status, 1) << reason;
        EXPECT_NE(outcome.errors.find(reason), std::string::npos) << outcome.errors;
    };
    const std::string otherType = "<plist><dict><key>ALBlockedLaunchApps</key><string>a</string></dict></plist>";
    put(file, otherType);
    isRefused("isn't a list");
    EXPECT_EQ(get(file), otherType);
    const std::string reference
        = "<plist><dict><key>k</key><dict><key>CF$UID</key><integer>1</integer></dict></dict></plist>";
    put(file, reference);
    isRefused("wouldn't outlive a write");
    EXPECT_EQ(get(file), reference);
    fs::remove(file);
    fs::create_directory(file);
    isRefused("it is a folder");
    EXPECT_EQ(phone.run({ "policy", "list" }).status, 1);
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    isRefused("it isn't a regular file");
    EXPECT_EQ(phone.run({ "policy", "list" }).status, 1);
}

TEST(StoreOfPolicies, OnAFullDiskNothingIsLostAndItIsSaid)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", "a" });
    phone.answer({ "policy", "mute", "a" });
    const fs::path folder = fs::path(phone.preferenceFile()).parent_path();
    const auto filesOf = [&folder] {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(folder))
            files[entry.path().filename()] = get(entry.path());
        return files;
    };
    const auto before = filesOf();
    const std::string full = "trap '' XFSZ; ulimit -f 1; exec \"$@\"";
    const std::string longName(20'000, 'x');
    for (const std::vector<std::string>& words :
        { std::vector<std::string> { "add", "ALBlockedLaunchApps", longName }, { "mute", longName } }) {
        std::vector<std::string> command { "/bin/sh", "-c", full, "sh", APPLEDGER_COMMAND, "--root", phone.root(),
            "policy" };
        command.insert(command.end(), words.begin(), words.end());
        const Outcome outcome = runProgram(command);
        EXPECT_EQ(outcome.status, 1) << words[0];
        EXPECT_NE(outcome.errors.find("can't write "), std::string::npos) << outcome.errors.substr(0, 200);
        EXPECT_EQ(filesOf(), before);
    }
}

TEST(StoreOfPolicies, AWrongRootIsSaid)
{
    const Phone phone;
    put(phone.root() + "/file", "");
    for (const char* const root : { "/missing", "/file" })
        for (const std::vector<std::string>& words : { std::vector<std::string> { "policy", "list" },
                 { "policy", "show", "a" }, { "explain", "launch", "a" }, { "phone", "status" } }) {
            std::vector<std::string> command { APPLEDGER_COMMAND, "--root", phone.root() + root };
            command.insert(command.end(), words.begin(), words.end());
            const Outcome outcome = runProgram(command);
            EXPECT_EQ(outcome.status, 1) << root << " " << words[1];
            EXPECT_NE(outcome.errors, "");
        }
    EXPECT_FALSE(fs::exists(phone.root() + "/missing"));
    fs::create_directory(phone.root() + "/shared");
    fs::permissions(phone.root() + "/shared", fs::perms::all);
    for (const char* const verb : { "list", "add" }) {
        std::vector<std::string> command { APPLEDGER_COMMAND, "--root", phone.root() + "/shared", "policy", verb };
        if (std::string_view(verb) == "add")
            command.insert(command.end(), { "ALBlockedLaunchApps", "a" });
        const Outcome outcome = runProgram(command);
        EXPECT_EQ(outcome.status, 1) << verb;
        EXPECT_NE(outcome.errors.find("others may write"), std::string::npos) << outcome.errors;
    }
    EXPECT_TRUE(fs::is_empty(phone.root() + "/shared"));
}

TEST(StoreOfPolicies, OutputThatCanNotBeWrittenIsExitOne)
{
    const Phone phone;
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", "a" });
    for (const char* const words : { "policy list", "policy list --json", "policy show a", "--help",
             "plan --bundle com.apple.springboard --process SpringBoard" }) {
        EXPECT_EQ(runTo(phone, words, "/dev/full").status, 1) << words;
        EXPECT_EQ(runTo(phone, words, "/dev/null").status, 0) << words;
    }
}

} // namespace scenario
