// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/HostMonitor.h"

#include "Native/Monitor/MonitorTexts.h"
#include "support/HostTrees.h"
#include "support/hosts/Host.h"
#include "support/x11/OtherProgram.h"

#include <gmock/gmock.h>

#include <csignal>
#include <mutex>

namespace notch {
namespace {

// What the monitor says, from its own thread.
class Heard {
public:
    void say(const std::string& line)
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    }
    void offer(const ApprovalRequest& request)
    {
        const std::lock_guard lock(mutex_);
        offered_ = request;
        lines_.push_back("offer");
    }
    ApprovalRequest offered() const
    {
        const std::lock_guard lock(mutex_);
        return offered_;
    }
    // Waits for the line, and forgets all up to it.
    testing::AssertionResult next(const std::string& line)
    {
        const bool heard = waitUntil([&] {
            const std::lock_guard lock(mutex_);
            const auto found = std::ranges::find(lines_, line);
            if (found == lines_.end())
                return false;
            lines_.erase(lines_.begin(), found + 1);
            return true;
        });
        const std::lock_guard lock(mutex_);
        return heard ? testing::AssertionSuccess()
                     : testing::AssertionFailure() << testing::PrintToString(lines_);
    }

private:
    mutable std::mutex mutex_;
    // Guarded by mutex_:
    std::vector<std::string> lines_;
    ApprovalRequest offered_;
};

std::string status(std::string_view text)
{
    return "status " + std::string(text);
}

// A monitor on this test's desktop, where another program has the keyboard.
class HostMonitorTest : public testing::TestWithParam<std::string> {
protected:
    HostMonitorTest()
    {
        DesktopTrust(Seconds{5}).requestTrust();
        program.openWindow("front");
    }
    void start(bool questions = false)
    {
        NativeApprovals::OnQuestion onQuestion;
        if (questions)
            onQuestion = [this](const auto& observation, Uptime) {
                constexpr std::array names{"unavailable", "absent", "waiting"};
                heard.say(std::string("question ") + names[observation.index()]);
            };
        monitor->start({.onRequest = [this](const auto& request) { heard.offer(request); },
                           .onRemoval = [this](const auto&) { heard.say("removal"); },
                           .onStatus = [this](const auto& text) { heard.say("status " + text); },
                           .onQuestion = onQuestion},
            {.approvals = true});
    }
    void offer(Host& host, const std::string& tree = groupedCardTree)
    {
        host.showInBackground(applications, tree);
        start();
        EXPECT_TRUE(heard.next("offer")) << tree;
    }
    void minimize()
    {
        for (const auto& window : applications.managed())
            if (window.isOfHost)
                program.iconify(window.window);
    }
    bool decide(Decision decision) { return monitor->decide(heard.offered().id, decision); }

    SystemClock clock;
    OtherProgram program;
    RunningApplications applications{{"quillmoss"}};
    Heard heard;
    std::unique_ptr<NativeApprovals> monitor = makeHostMonitor(clock, Seconds{0.1});
};

TEST_P(HostMonitorTest, offersTheCardInTheBackgroundAndPressesTheChosenButtonOnce)
{
    for (const auto& tree : {groupedCardTree, flattenedCardTree}) {
        Host host(GetParam());
        offer(host, tree);
        EXPECT_NE(heard.offered().toolInputJSON.string().find("rm -rf build"), std::string::npos);
        EXPECT_TRUE(decide(Decision::passthrough));
        host.show("Window @0,0,400,300 \"Chat\"\n");
        EXPECT_TRUE(heard.next(status(monitorText::waiting)));
        for (const auto& [decision, button] :
            {std::pair{Decision::allow, "allow"}, std::pair{Decision::deny, "deny"}}) {
            host.showInBackground(applications, tree);
            EXPECT_TRUE(heard.next("offer"));
            EXPECT_TRUE(decide(decision));
            EXPECT_EQ(host.pressed(), std::string("pressed ") + button + '\n');
            EXPECT_FALSE(decide(decision));
        }
        minimize();
    }
}

TEST_P(HostMonitorTest, takesTheCardBackWhenItIsNoLongerSure)
{
    using Change = std::function<void(Host&)>;
    const auto told = [](std::string command) { return [=](Host& host) { host.tell(command); }; };
    std::optional<Host> twin;
    const std::vector<std::pair<std::string_view, Change>> rows{
        {monitorText::inFront,
            [&](Host&) { applications.activate(applications.running().front().pid); }},
        {monitorText::hidden, [&](Host&) { minimize(); }},
        {monitorText::refusedCard, told("disable allow")},
        {monitorText::refusedCard, told("remove deny")},
        {monitorText::refusedCard, told("rename command rm -rf ...")},
        {monitorText::notRunning,
            [&](Host&) { ::kill(applications.running().front().pid, SIGKILL); }},
        {monitorText::severalInstances,
            [&](Host&) { twin.emplace(GetParam()).show(groupedCardTree); }},
    };
    for (const auto& [why, change] : rows) {
        Host host(GetParam());
        offer(host);
        change(host);
        EXPECT_TRUE(heard.next("removal")) << why;
        EXPECT_TRUE(heard.next(status(why))) << why;
        EXPECT_FALSE(decide(Decision::allow)) << why;
        monitor->stop();
    }
}

// Between the offer and the click.
TEST_P(HostMonitorTest, pressesNothingThatIsNotAsItWasOffered)
{
    for (const auto* command :
        {"rename command rm -rf dist", "disable allow", "remove allow", "rename allow 取消删除"}) {
        Host host(GetParam());
        offer(host);
        const auto offered = heard.offered().id; // By now another card may be on offer.
        host.tell(command);
        EXPECT_FALSE(monitor->decide(offered, Decision::allow)) << command;
        host.tell("nothing"); // A press would have been said by now.
        monitor->stop();
    }
}

// Hosts in Qt and GTK, or the one that NOTCH_HOST names (tools/try-hosts).
std::vector<std::string> hostPrograms()
{
    const char* const named = std::getenv("NOTCH_HOST");
    return named ? std::vector<std::string>{named}
                 : std::vector<std::string>{QT_HOST_PATH, GTK_HOST_PATH};
}
INSTANTIATE_TEST_SUITE_P(Hosts, HostMonitorTest, testing::ValuesIn(hostPrograms()),
    [](const auto& made) { return made.index == 0 ? "AnyToolkit" : "GTK"; });

TEST_P(HostMonitorTest, reportsAQuestionInTheBackground)
{
    if (GetParam() == GTK_HOST_PATH)
        GTEST_SKIP() << "GTK 3 buttons show no children: it has no question card";
    Host host(GetParam());
    host.showInBackground(applications, questionTree);
    start(true);
    EXPECT_TRUE(heard.next("question waiting"));
    host.tell("remove skip");
    EXPECT_TRUE(heard.next("question unavailable"));
    host.show("Window @0,0,400,300 \"Chat\"\n");
    EXPECT_TRUE(heard.next("question absent"));
}

} // namespace
} // namespace notch
