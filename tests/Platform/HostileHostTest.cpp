// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/hosts/Host.h"
#include "Native/FakeHost.h"
#include "Native/Monitor/MonitorTexts.h"
#include "Native/Monitor/NativeMonitor.h"
#include "Native/Scan/AccessibilityScan.h"
#include "Native/Tree/PreOrderWalk.h"
#include "Platform/Accessibility/AtspiAccessibility.h"
#include "Platform/Accessibility/HostMonitor.h"
#include "Platform/Accessibility/NativeDiagnosis.h"
#include "Platform/Accessibility/Sha256.h"
#include "support/HostTrees.h"
#include "support/x11/OtherProgram.h"

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <malloc.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>

namespace notch {
namespace {

using Lines = std::vector<std::string>;

// What a scan passes over, and what it does not go below.
const std::string oddTree = R"(Window #w @0,0,600,400 "Chat"
  Group #page "A page without a place"
    StaticText #half @590,10,20,20 "half outside"
    StaticText #outside @600,10,20,20 "outside"
    Button #fits @-2,0,604,402 "fits"
    Button #over @-3,0,604,402 "too large"
      StaticText #below @10,10,20,20 "below"
    Button #off -enabled @10,40,90,20 "off"
    Group #hidden -visible @10,60,90,90
      StaticText #within @10,70,20,20 "within"
    Image #icon @10,160,16,16
    StaticText #placeless "nowhere"
)";

// The monitor without its thread, over the real desktop: a test ticks it.
class HostileHostTest : public testing::Test {
protected:
    HostileHostTest()
    {
        DesktopTrust(Seconds{5}).requestTrust();
        program.openWindow("front");
        monitor.start({.onRequest = [this](const auto& request) { offered = request.id; },
                          .onRemoval = [this](const auto&) { offered.clear(); },
                          .onStatus = [this](const auto& text) { status = text; },
                          .onQuestion = {}},
            {.approvals = true});
    }
    // The first look at a program is always in vain.
    void offer()
    {
        host.showInBackground(applications, groupedCardTree);
        EXPECT_TRUE(waitUntil([&] { return monitor.tick(), !offered.empty(); })) << status;
    }
    static void endAccessibilityBus()
    {
        const auto bus = bus::at(DesktopTrust(Seconds{5}).address().value());
        ucred daemon{};
        socklen_t size = sizeof daemon;
        EXPECT_EQ(
            ::getsockopt(sd_bus_get_fd(bus.get()), SOL_SOCKET, SO_PEERCRED, &daemon, &size), 0);
        ::kill(daemon.pid, SIGKILL);
        pollfd gone{sd_bus_get_fd(bus.get()), 0, 0};
        ::poll(&gone, 1, -1);
    }
    // While it runs no answer may be waited for longer than a scan and some calls last.
    template <class Work> auto timed(Work work, const std::string& what)
    {
        const auto begun = Uptime::now();
        const auto result = work();
        EXPECT_LT(Uptime::now() - begun, Seconds{0.9}) << what;
        return result;
    }

    SystemClock clock;
    OtherProgram program;
    RunningApplications applications{{"quillmoss"}};
    AtspiAccessibility accessibility{applications};
    NativeMonitor monitor{{accessibility, applications, clock, sha256}, [](bool) {}};
    Host host{BARE_HOST_PATH};
    std::string offered; // The request's id.
    std::string status;
};

TEST_F(HostileHostTest, costsALimitedTimeAndNoMemoryAndTheNextGoodLookWorks)
{
    const std::vector<std::pair<std::string, Lines>> rows{
        {"many children", {"show\n" + groupedCardTree + times(10'000, "    Group\n") + "."}},
        {"a deep tree", {"show\n" + groupedCardTree + nested(5'000, 4, "Group") + "."}},
        {"a circle", {"AXChildren card = [#w]"}},
        {"a huge text", {"rm -rf build => " + std::string(2 << 20, 'x')}},
        {"no text", {"garble command"}},
        {"another's child", {"AXChildren card = [#another]"}},
        {"slow answers", {"slow"}},
        {"a flood", {"AXChildren card = [#w]", "flood"}},
        {"a stop", {"at attributes risk: stop"}},
    };
    for (const auto& [what, lies] : rows) {
        offer();
        const auto clicked = offered;
        for (const auto& lie : lies)
            host.tell(lie);
        std::size_t used = 0;
        for (int look = 0; look < 4; ++look) {
            timed([&] { return monitor.tick(), true; }, what);
            EXPECT_EQ(status, monitorText::incomplete) << what;
            EXPECT_EQ(offered, "") << what;
            if (look == 1)
                used = ::mallinfo2().uordblks;
        }
        EXPECT_LT(::mallinfo2().uordblks, used + 65'536) << what;
        EXPECT_FALSE(monitor.decide(clicked, Decision::allow)) << what;
        host.signal(SIGCONT);
        host.tell("nothing"); // A press would have been said by now.
    }
    offer();
}

// What happens while a click is on its way: in its scan, or after it.
TEST_F(HostileHostTest, pressesNothingThatChangesUnderTheClick)
{
    const std::vector<std::pair<std::string, std::string_view>> rows{
        {"at attributes risk: stop", monitorText::cardChanged},
        {"at attributes risk: close", monitorText::cardChanged},
        {"at attributes risk: replace", monitorText::cardChanged},
        {"at attributes risk: rm -rf build => rm -rf dist", monitorText::cardChanged},
        {"at attributes deny: at attributes allow: stop", monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: close", monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: replace", monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: AXEnabled allow = false",
            monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: drop allow", monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: 允许本次删除 => 取消删除",
            monitorText::buttonUnavailable},
        {"at attributes deny: at attributes allow: die", monitorText::buttonUnavailable},
    };
    for (const auto& [change, why] : rows) {
        offer();
        host.tell(change);
        EXPECT_FALSE(timed([&] { return monitor.decide(offered, Decision::allow); }, change));
        EXPECT_EQ(status, why) << change;
        host.signal(SIGCONT);
        if (!change.ends_with("die"))
            host.tell("nothing");
    }
}

TEST_F(HostileHostTest, outlivesTheAccessibilityBus)
{
    offer();
    endAccessibilityBus();
    EXPECT_FALSE(monitor.decide(offered, Decision::allow));
    // Another card: this one has had its click, and on a new bus the host may have its old name.
    host.showInBackground(applications, groupedCardTree);
    EXPECT_TRUE(waitUntil([&] {
        DesktopTrust(Seconds{5}).requestTrust();
        return monitor.tick(), !offered.empty();
    })) << status;
}

TEST_F(HostileHostTest, isReadAgainOnceAccessIsGiven)
{
    host.showInBackground(applications, groupedCardTree);
    endAccessibilityBus(); // The next one is not in use yet.
    std::atomic<bool> lacksAccess = false, offers = false;
    const auto resting = makeHostMonitor(clock, Seconds{0.05});
    resting->start({.onRequest = [&](const auto&) { offers = true; },
                       .onRemoval = {},
                       .onStatus =
                           [&](const auto& text) {
                               lacksAccess = lacksAccess || text == monitorText::needsAccess;
                           },
                       .onQuestion = {}},
        {.approvals = true});
    EXPECT_TRUE(waitUntil([&] { return lacksAccess.load(); }));
    DesktopTrust(Seconds{5}).requestTrust();
    EXPECT_TRUE(waitUntil([&] { return offers.load(); }));
    resting->stop();
}

TEST_F(HostileHostTest, isDiagnosedWithoutAWordOfItsCard)
{
    host.showInBackground(applications, groupedCardTree);
    std::ostringstream said;
    diagnoseNative(said);
    EXPECT_EQ(
        said.str(), "Accessibility trusted: true\n" + std::string(monitorText::incomplete) + '\n'
                        + std::string(monitorText::found)
                        + "\nRecognized one actionable native approval card (contents omitted).\n");
}

// What a scan makes of a host's windows, a line a node; places are those in the window.
std::string records(Accessibility& accessibility, std::int32_t pid)
{
    const SystemClock clock;
    AXRead read(pid, clock.uptime());
    read.deadline = read.deadline + Seconds{5}; // A slow machine is no other tree.
    const auto roots = AccessibilityScan(accessibility, clock, read).readRoots(false);
    std::ostringstream lines;
    for (PreOrderWalk walk(roots); const auto* node = walk.next();) {
        lines << node->id << ' ' << node->role << (node->enabled ? " on" : " off")
              << (node->visible ? " shown" : "") << ' ' << node->children.size();
        if (const auto& frame = node->frame; frame)
            lines << " @" << frame->x - roots[0].frame->x << ',' << frame->y - roots[0].frame->y
                  << ',' << frame->width << ',' << frame->height;
        lines << testing::PrintToString(node->texts) << '\n';
    }
    for (const auto& [id, title] : read.windowTitles)
        lines << id << ' ' << title;
    lines << (read.complete ? " complete " : " incomplete ") << read.questionTreeComplete;
    return lines.str();
}

TEST_F(HostileHostTest, isReadRecordForRecordAsTheSameTreeInTheFake)
{
    const std::string window = "Window #w @0,0,600,400 \"Chat\"\n";
    const auto deep = [&](std::size_t depth) { return window + nested(depth, 2, "Group"); };
    const std::vector<std::string> ofAnyToolkit{groupedCardTree, flattenedCardTree, questionTree};
    const std::vector<std::string> others{
        oddTree, window + times(300, "  Group\n"), deep(36), deep(37)};
    Host qt(QT_HOST_PATH);
    for (auto* const shown : {&host, &qt}) {
        auto trees = ofAnyToolkit;
        if (shown == &host)
            trees.insert(trees.end(), others.begin(), others.end());
        for (const auto& tree : trees) {
            FakeHost fake(tree);
            const auto expected = records(fake, FakeHost::pid);
            shown->showInBackground(applications, tree);
            const auto read = [&] {
                return records(accessibility, applications.running().back().pid);
            };
            EXPECT_TRUE(waitUntil([&] {
                return accessibility.isProcessTrusted() && read() == expected;
            })) << expected
                << read();
        }
    }
}

} // namespace
} // namespace notch
