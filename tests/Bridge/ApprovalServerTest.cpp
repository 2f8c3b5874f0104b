// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"

#include "Bridge/HookClient.h"
#include "Transport/Framing.h"
#include "support/Connections.h"
#include "support/ShortMemory.h"
#include "support/SystemClock.h"
#include "support/TemporaryDirectory.h"
#include "support/Trace.h"

#include <algorithm>
#include <future>
#include <gtest/gtest.h>
#include <map>

namespace notch {
namespace {

constexpr Seconds ample{30};

// Lapses only after every wait of these tests.
ApprovalRequest request(const std::string& tool, Seconds lifetime = ample + Seconds{15})
{
    return {
        .id = UUID::random().text(),
        .toolName = tool,
        .toolInputJSON = "{}",
        .eventName = "PermissionRequest",
        .expiresAt = Date::now() + lifetime,
    };
}

class ApprovalServerTest : public testing::Test {
protected:
    using Answer = std::future<std::optional<Decision>>;

    void SetUp() override { ASSERT_FALSE(server.start(callbacks())); }

    ApprovalBridge::Callbacks callbacks()
    {
        return {
            .onRequest =
                [this](const auto& asked) {
                    exemptFromShortMemory();
                    tools[asked.id] = asked.toolName;
                    trace.add("request " + asked.id);
                },
            .onRemoval = [this](const auto& id) { trace.add("removal " + tools.at(id)); },
            .onUnreachable = [this] { trace.add("unreachable"); },
        };
    }

    // The id under which the server hands over its next request.
    std::string nextID()
    {
        const auto line = trace.next();
        EXPECT_TRUE(line.starts_with("request ")) << line;
        return line.substr(std::min<std::size_t>(line.size(), 8));
    }

    Answer ask(const ApprovalRequest& asked) const
    {
        return std::async(std::launch::async, [this, asked] { return client.exchange(asked); });
    }

    // A connection on which the line was sent, as a hook does.
    UniqueFd sent(std::string_view line) const
    {
        auto connection = place.connect();
        EXPECT_TRUE(
            connection && writeFrame(*connection, line, {.deadline = Uptime::now() + ample}));
        return std::move(connection).value_or(UniqueFd());
    }

    TemporaryDirectory temporary;
    SocketPath place{SocketDirectory(temporary / "bridge"), approvalSocketName};
    HookClient client{place.directory()};
    std::map<std::string, std::string> tools; // By the id; of the callbacks' thread alone.
    Trace trace;
    ApprovalServer server{place.directory()};
};

TEST_F(ApprovalServerTest, relaysADecisionToTheHookAtOnce)
{
    const auto start = Uptime::now();
    for (const auto decision : {Decision::deny, Decision::allow, Decision::passthrough}) {
        auto answer = ask(request("Bash"));
        EXPECT_TRUE(server.decide(nextID(), decision));
        EXPECT_EQ(answer.get(),
            decision == Decision::passthrough ? std::nullopt : std::optional(decision));
        EXPECT_EQ(trace.next(), "removal Bash");
    }
    EXPECT_LT(Uptime::now() - start, ample);
}

// Also when the wall clock is set back while it waits. Set forward, it lets no decision in.
TEST_F(ApprovalServerTest, letsARequestLapse)
{
    const auto start = Uptime::now();
    auto answer = ask(request("Bash", Seconds{0.5}));
    const auto id = nextID();
    {
        const BentClock clock(BentClock::Bend::setForward);
        EXPECT_FALSE(server.decide(id, Decision::allow));
    }
    const BentClock clock(BentClock::Bend::setBack);
    EXPECT_EQ(answer.get(), std::nullopt);
    EXPECT_GE(Uptime::now() - start, Seconds{0.45}); // The two clocks may drift a little.
    EXPECT_EQ(trace.next(), "removal Bash");
    EXPECT_FALSE(server.decide(id, Decision::allow));
}

TEST_F(ApprovalServerTest, closesOnWhatIsNoNewRequestAndSaysNothing)
{
    const auto first = request("Bash");
    auto same = first;
    std::ranges::transform(
        first.id, same.id.begin(), [](unsigned char c) { return std::tolower(c); });
    auto answer = ask(first);
    const auto id = nextID();
    const auto other = request("Read").serialize();
    for (const auto& line : {same.serialize(), request("Read", Seconds{-1}).serialize(),
             other + "\n" + other, std::string("{}"), std::string(maximumFramePayload, '[')})
        EXPECT_TRUE(isClosed(sent(line))) << line.substr(0, 80);
    EXPECT_TRUE(server.decide(id, Decision::deny));
    EXPECT_EQ(answer.get(), Decision::deny);
    EXPECT_EQ(trace.next(), "removal Bash");
    server.stop();
    EXPECT_TRUE(trace.empty());
}

// A hook that uses the id of one that has gone gets nothing that was meant for the other.
TEST_F(ApprovalServerTest, endsTheWaitOfAHookThatGoesOrSpeaksAgain)
{
    const auto line = request("Bash").serialize();
    std::string gone;
    for (const bool goes : {true, false}) {
        auto connection = sent(line);
        const auto id = nextID();
        EXPECT_FALSE(server.decide(gone, Decision::allow));
        if (goes) {
            connection = {};
        } else {
            sendBytes(connection, "\n");
            EXPECT_TRUE(isClosed(connection));
        }
        EXPECT_EQ(trace.next(), "removal Bash");
        EXPECT_FALSE(server.decide(id, Decision::allow));
        gone = id;
    }
}

TEST_F(ApprovalServerTest, holdsThirtyTwoAndClosesTheNext)
{
    std::vector<UniqueFd> waiting;
    for (int i = 0; i < 32; ++i) {
        waiting.push_back(sent(request("Bash").serialize()));
        nextID();
    }
    const auto oneMore = place.connect();
    ASSERT_TRUE(oneMore);
    sendBytes(*oneMore, request("Read").serialize() + "\n");
    EXPECT_TRUE(isClosed(*oneMore));

    const auto before = Uptime::now();
    server.stop();
    EXPECT_LT(Uptime::now() - before, Seconds{5});
    for (const auto& connection : waiting) {
        EXPECT_TRUE(isClosed(connection));
        EXPECT_EQ(trace.next(), "removal Bash");
    }
    EXPECT_FALSE(place.identity());
}

TEST_F(ApprovalServerTest, startsOnceUntilItIsStopped)
{
    const TransportError running{TransportError::Code::alreadyRunning};
    EXPECT_EQ(running.describe(), "An approval bridge is already running.");
    EXPECT_EQ(server.start({}), running);
    EXPECT_EQ(ApprovalServer(place.directory()).start({}), running);
    server.stop();
    server.stop();
    EXPECT_EQ(client.exchange(request("Bash")), std::nullopt);
}

TEST_F(ApprovalServerTest, tellsOnceThatHooksCannotReachIt)
{
    auto waiting = ask(request("Bash"));
    const auto id = nextID();
    ASSERT_EQ(::unlink(place.path().c_str()), 0);
    EXPECT_EQ(trace.next(), "unreachable");

    ApprovalServer other(place.directory());
    ASSERT_FALSE(other.start({}));
    EXPECT_TRUE(server.decide(id, Decision::allow));
    EXPECT_EQ(waiting.get(), Decision::allow);
    EXPECT_EQ(trace.next(), "removal Bash");
    server.stop();
    EXPECT_TRUE(trace.empty());
    EXPECT_TRUE(place.isSafe()) << "the other server's path is not this one's to remove";
}

// Every allocation of the server's threads fails once.
TEST_F(ApprovalServerTest, losesOneConnectionForWantOfMemoryAndServesTheNext)
{
    server.stop();
    ASSERT_FALSE(server.start({.onRequest = [this](const auto& asked) {
        exemptFromShortMemory();
        server.decide(asked.id, Decision::allow);
    }}));
    bool failed = true;
    for (std::size_t after = 0; failed; ++after) {
        std::optional<Decision> answer;
        {
            const ShortMemory memory(after);
            answer = client.exchange(request("Bash"));
            failed = memory.hasFailed();
        }
        EXPECT_TRUE(failed || answer == Decision::allow) << after;
        EXPECT_EQ(client.exchange(request("Bash")), Decision::allow) << after;
    }
}

} // namespace
} // namespace notch
