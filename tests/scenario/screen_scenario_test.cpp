#include "scenario/command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using scenario::Json;
using scenario::Phone;

constexpr const char* notes = "com.example.notes";

TEST(ScreenScenario, TheScreenIsWrittenAsAPictureAndAsText)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::string file = phone.root() + "/screen.png";
    EXPECT_EQ(phone.run({ "phone", "screenshot", file, "--scale", "1" }).status, 0);
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes { std::istreambuf_iterator<char>(stream), {} };
    EXPECT_TRUE(bytes.starts_with("\x89PNG"));
    // The size stands behind the header's name: 390 by 844.
    EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\x01\x86\0\0\x03\x4C", 8));

    EXPECT_NE(phone.run({ "phone", "describe" }).output.find("\"Scribbles\""), std::string::npos);
    EXPECT_EQ(phone.run({ "phone", "folder", "open", "Utilities" }).status, 0);
    EXPECT_NE(phone.run({ "phone", "describe" }).output.find("SBFolderView"), std::string::npos);

    const auto refused = phone.run({ "phone", "screenshot", phone.root() + "/nowhere/screen.png" });
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("can't write"), std::string::npos);
    EXPECT_EQ(phone.run({ "phone", "folder", "open", "Nonsense" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "screenshot", file, "--scale", "0" }).status, 2);
    phone.answer({ "phone", "down" });
    EXPECT_EQ(phone.run({ "phone", "describe" }).status, 1);
}

TEST(FingerScenario, NothingIsTypedWhereNothingIsEdited)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const std::vector<std::string>& command :
        { std::vector<std::string> { "phone", "type", "notes" }, { "phone", "key", "return" } }) {
        const auto refused = phone.run(command);
        EXPECT_EQ(refused.status, 1);
        EXPECT_NE(refused.errors.find("nothing on the screen is being edited"), std::string::npos);
    }
    EXPECT_EQ(phone.run({ "phone", "key", "nonsense" }).status, 2);
}

TEST(FingerScenario, AnIconIsTouchedByItsNameItsIdentifierOrItsPlace)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const auto icon = [](const Json& elements, const auto& self) -> Json {
        for (const Json& element : elements) {
            if (element.value("identifier", "") == notes)
                return element;
            if (element.contains("children"))
                if (Json found = self(element["children"], self); !found.is_null())
                    return found;
        }
        return nullptr;
    };
    const Json scribbles = icon(phone.answer({ "phone", "describe" })["windows"], icon);
    ASSERT_TRUE(scribbles.is_object());
    EXPECT_EQ(scribbles["label"], "Scribbles");
    EXPECT_EQ(scribbles["role"], "button");
    const auto middle = [&scribbles](int side) {
        return std::to_string(
            static_cast<int>(scribbles["frame"][side].get<double>() + scribbles["frame"][side + 2].get<double>() / 2));
    };
    for (const std::string& place :
        { std::string("Scribbles"), std::string("scribb"), std::string(notes), middle(0) + "," + middle(1) }) {
        const Json report = phone.answer({ "phone", "touch", place });
        EXPECT_EQ(report["touched"]["label"], "Scribbles") << place;
        EXPECT_EQ(report["opened"], Json::array({ notes })) << place;
        EXPECT_EQ(report["front"], notes) << place;
        phone.answer({ "phone", "home" });
    }
    phone.answer({ "policy", "block", notes });
    const Json refused = phone.answer({ "phone", "touch", "Scribbles" });
    EXPECT_EQ(refused["opened"], Json::array());
    EXPECT_EQ(refused["rule"], "ALBlockedLaunchApps");
    EXPECT_EQ(refused["application"], notes);
    const std::string said = phone.run({ "phone", "touch", "Scribbles" }).output;
    EXPECT_NE(said.find("Why: ALBlockedLaunchApps lists " + std::string(notes)), std::string::npos) << said;

    for (const char* const place : { "Nonsense", "400,10", "nan,nan", "1,2,3", "e" })
        EXPECT_EQ(phone.run({ "phone", "touch", place }).status, 1) << place;
}

TEST(FingerScenario, WhatIsNoTapOpensNothing)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const char* const to : { "up", "Settings" })
        EXPECT_EQ(phone.answer({ "phone", "swipe", "Scribbles", to })["opened"], Json::array()) << to;
    EXPECT_EQ(phone.answer({ "phone", "drag", "Scribbles", "left", "--speed", "500", "--hold", "0" })["opened"],
        Json::array());
    EXPECT_EQ(phone.answer({ "phone", "wait", "--for", "Scribbles" })["ok"], true);
    EXPECT_EQ(phone.run({ "phone", "wait", "--for", "Nonsense", "--within", "0.1" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "wait", "--for", "Scribbles", "--gone", "--within", "0" }).status, 1);
    phone.answer({ "phone", "touch", "Utilities" });
    EXPECT_EQ(phone.answer({ "phone", "wait", "--for", "Clock" })["ok"], true) << "in the open folder";
}

} // namespace
