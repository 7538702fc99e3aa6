#include "phone/control/answers.h"
#include "phone/control/request_queue.h"
#include "phone/system/journal.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

namespace phone {

using namespace platform;

namespace {

std::string log;
int depth = 0;
std::vector<Reply> held;

/// Notes its name in the journal, lets the loop run until it is idle, and says what it found in the journal.
Json visit(const Json& request)
{
    const std::string name = text(request, "name");
    EXPECT_EQ(++depth, 1) << "a request was begun inside another";
    log += "+" + name;
    journal(JournalEvent::Note, name);
    dispatch_async(dispatch_get_main_queue(), [name] { journal(JournalEvent::Note, name + " later"); });
    settle();
    log += "-" + name + " ";
    --depth;
    return { { "ok", true }, { "journal", journalText(takeJournal()) } };
}

void hold(const Json& request, const Reply& reply)
{
    log += "(" + text(request, "name");
    held.push_back(reply);
}

void forget(const Json&, const Reply&) { }

Json look(const Json&)
{
    return { { "ok", true }, { "held", held.size() } };
}

constexpr RequestRow rows[] {
    { "visit", visit },
    { "hold", hold },
    { "forget", forget },
    { "look", look, RequestRow::Turn::AtOnce },
};
constexpr RequestRows table { rows };
constexpr const RequestRows* tables[] { &table };

class RequestQueue : public testing::Test {
protected:
    void ask(const std::string& request)
    {
        handler_(request, [this](std::string_view answer) { answers_.push_back(Json::parse(answer)); });
    }
    void ask(const std::string& verb, const std::string& name)
    {
        ask(Json { { "verb", verb }, { "name", name } }.dump());
    }

    const BusHandler handler_ = requestHandler(tables);
    std::vector<Json> answers_;
};

} // namespace

TEST_F(RequestQueue, ServesOneAtATimeInTheOrderOfArrivalEachWithAJournalOfItsOwn)
{
    // They arrive while the first is served, which runs the loop.
    for (const char* const name : { "b", "c" })
        dispatch_async(dispatch_get_main_queue(), [this, name] { ask("visit", name); });
    dispatch_async(dispatch_get_main_queue(), [] { journal(JournalEvent::Note, "beside"); });
    ask("visit", "a");
    runUntilIdle();
    EXPECT_EQ(log, "+a-a +b-b +c-c ");
    ASSERT_EQ(answers_.size(), 3U);
    EXPECT_EQ(answers_[0]["journal"], "note a | note a later");
    EXPECT_EQ(answers_[1]["journal"], "note b | note b later");
    EXPECT_EQ(answers_[2]["journal"], "note c | note c later");
    EXPECT_EQ(journalText(takeJournal()), "note beside");
}

TEST_F(RequestQueue, ALateAnswerHoldsTheOthersUpButNotThoseThatOnlyLook)
{
    ask("hold", "a");
    ask("visit", "b");
    ask("look", "");
    ask("ping", "");
    runUntilIdle();
    EXPECT_EQ(log, "(a");
    ASSERT_EQ(answers_.size(), 2U);
    EXPECT_EQ(answers_[0]["held"], 1);
    EXPECT_EQ(answers_[1]["ok"], true);

    held.front()({ { "ok", true }, { "who", "a" } });
    held.front()({ { "ok", true }, { "who", "a again" } });
    runUntilIdle();
    EXPECT_EQ(log, "(a+b-b ");
    ASSERT_EQ(answers_.size(), 4U);
    EXPECT_EQ(answers_[2]["who"], "a");
    held.clear();
}

TEST_F(RequestQueue, WhatNobodyAnswersIsAnsweredAndLetsTheNextIn)
{
    const std::pair<const char*, const char*> refused[] { { "not JSON", "doesn't know" }, { "[]", "doesn't know" },
        { R"({"verb":7})", "doesn't know" }, { R"({"verb":"dance"})", "doesn't know" },
        { R"({"verb":"forget"})", "no answer" } };
    for (const auto& [request, error] : refused) {
        answers_.clear();
        ask(request);
        runUntilIdle();
        ASSERT_EQ(answers_.size(), 1U) << request;
        EXPECT_EQ(answers_[0]["ok"], false) << request;
        EXPECT_NE(answers_[0]["error"].get<std::string>().find(error), std::string::npos) << answers_[0];
    }
    ask("visit", "a");
    runUntilIdle();
    EXPECT_EQ(log, "+a-a ");
}

TEST_F(RequestQueue, RefusesMoreThanMayWaitAndServesThoseThatDo)
{
    constexpr std::size_t flood = 20'000;
    ask("hold", "first");
    for (std::size_t index = 0; index < flood; ++index)
        ask("visit", std::to_string(index));
    EXPECT_EQ(answers_.size(), flood - mostWaitingRequests);
    EXPECT_EQ(answers_.front()["ok"], false);
    held.front()({ { "ok", true } });
    held.clear();
    runUntilIdle();
    EXPECT_EQ(answers_.size(), flood + 1);
    EXPECT_NE(log.find("+255-255 "), std::string::npos);
    EXPECT_EQ(log.find("+256"), std::string::npos);
}

} // namespace phone
