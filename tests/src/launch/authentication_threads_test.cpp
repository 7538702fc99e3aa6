#include "launch/authentication_gate.h"

#include "core/hook_group.h"
#include "phone/frontboard/open_request.h"
#include "phone/localauthentication/prompts.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "support/phone_fixture.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;

namespace {

const std::string notes = "com.example.notes";

std::atomic<std::thread::id> launcher {};

struct NotesTheThread : appledger::Hook<NotesTheThread, "FBSOpenApplicationService",
                            "openApplication:withOptions:completion:", void(id, id, id)> {
    static void replacement(const id& self, SEL cmd, const id& identifier, const id& options, const id& completion)
    {
        launcher = std::this_thread::get_id();
        original(self, cmd, identifier, options, completion);
    }
};
constexpr appledger::HookRow notingRows[] { NotesTheThread::row() };

} // namespace

TEST(AuthenticationThreads, PromptsComeUpAndAreAnsweredOnAnyThread)
{
    support::Phone phone("SpringBoard", "16.0");
    phone.with({ notes }).wanting({ .requireAuth = { notes } }).inject().start();
    std::atomic<int> running { 4 };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&running] {
            for (int prompt = 0; prompt < 3000; ++prompt)
                appledger::ALPromptAuthAndLaunchApp(notes);
            --running;
        });
    while (running > 0) {
        phone::answerPrompt(phone::PromptAnswer::Failed);
        runUntilIdle();
    }
    for (std::thread& thread : threads)
        thread.join();
    while (phone::answerPrompt(phone::PromptAnswer::Failed)) { }
    runUntilIdle();
    EXPECT_EQ(appledger::g_authBypassAppId.load(), nullptr);
}

TEST(AuthenticationThreads, ASuccessPassesEveryQueueAndOpensTheApplication)
{
    support::Phone phone("SpringBoard", "16.0");
    phone.with({ notes }).wanting({ .requireAuth = { notes } }).inject().start();
    appledger::installHookGroup({ "NotesTheThread", notingRows });
    phone.enter("tap", { notes });
    EXPECT_TRUE(phone::answerPrompt(phone::PromptAnswer::Authenticated));
    EXPECT_TRUE(runUntil([] { return phone::frontmostApplication() == notes; }, 10s));
    EXPECT_NE(launcher.load(), std::thread::id());
    EXPECT_NE(launcher.load(), std::this_thread::get_id()) << "the launch itself keeps nobody waiting";
}

TEST(AuthenticationThreads, ApplicationsOpenOnTheMainThreadWhoeverAsks)
{
    support::Phone phone("SpringBoard", "16.0");
    phone.with({ notes }).start();
    std::atomic<std::thread::id> opener {};
    phone::setOpenApplicationHandler([&opener](const phone::OpenRequest&) {
        opener = std::this_thread::get_id();
        return true;
    });
    std::atomic<int> completions { 0 };
    dispatch_async(dispatch_get_global_queue(QueuePriority::High), [&completions] {
        const id service = send<"sharedInstance">(id(objc_getClass("FBSOpenApplicationService")));
        send<"openApplication:withOptions:completion:", void>(
            service, string(notes), nil, block([&completions](const id& error) { completions += error ? 0 : 1; }));
        const id workspace = send<"defaultWorkspace">(id(objc_getClass("LSApplicationWorkspace")));
        completions += send<"openApplicationWithBundleID:", bool>(workspace, string(notes)) ? 1 : 0;
    });
    EXPECT_TRUE(runUntil([&completions] { return completions == 2; }, 10s));
    EXPECT_EQ(opener, std::this_thread::get_id());
}
