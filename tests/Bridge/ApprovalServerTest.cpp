// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"

#include "Bridge/HookClient.h"
#include "Transport/Framing.h"
#include "support/Connections.h"
#include "support/SystemClock.h"
#include "support/TemporaryDirectory.h"
#include "support/Trace.h"

#include <future>
#include <gtest/gtest.h>

namespace notch {
namespace {

constexpr Seconds ample{30};
constexpr std::string_view idWithoutNumber = "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E";

// Lapses only after every wait of these tests. Numbers have two digits.
ApprovalRequest request(int number, Seconds lifetime = ample + Seconds{15})
{
    return {
        .id = std::string(idWithoutNumber) + std::to_string(number),
        .toolName = "Bash",
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
            .onRequest = [this](const auto& asked) { add("request ", asked.id); },
            .onRemoval = [this](const auto& id) { add("removal ", id); },
            .onUnreachable = [this] { trace.add("unreachable"); },
        };
    }

    void add(const std::string& word, const std::string& id)
    {
        trace.add(word + id.substr(idWithoutNumber.size()));
    }

    // A hook whose request the server has taken.
    Answer ask(const ApprovalRequest& asked)
    {
        auto answer =
            std::async(std::launch::async, [this, asked] { return client.exchange(asked); });
        EXPECT_EQ(trace.next(), "request " + asked.id.substr(idWithoutNumber.size()));
        return answer;
    }
    Answer ask(int number) { return ask(request(number)); }
    bool decide(int number, Decision decision)
    {
        return server.decide(request(number).id, decision);
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
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), approvalSocketName};
    HookClient client{place.directory()};
    Trace trace;
    ApprovalServer server{place.directory()};
};

TEST_F(ApprovalServerTest, relaysTheFirstDecisionOnEachRequest)
{
    struct Row {
        int number;
        Decision decision;
        std::optional<Decision> answer;
    };
    const auto start = Uptime::now();
    std::array<Answer, 3> answers{ask(10), ask(11), ask(12)};
    EXPECT_FALSE(decide(13, Decision::allow));
    for (const auto& row : {Row{11, Decision::deny, Decision::deny},
             Row{10, Decision::allow, Decision::allow}, Row{12, Decision::passthrough, {}}}) {
        EXPECT_TRUE(decide(row.number, row.decision));
        EXPECT_FALSE(decide(row.number, Decision::allow));
        EXPECT_EQ(answers.at(row.number - 10U).get(), row.answer) << row.number;
        EXPECT_EQ(trace.next(), "removal " + std::to_string(row.number));
        EXPECT_FALSE(decide(row.number, Decision::allow));
    }
    EXPECT_LT(Uptime::now() - start, ample);
}

// Also when the wall clock is set back while it waits. Set forward, it lets no decision in.
TEST_F(ApprovalServerTest, letsARequestLapse)
{
    const auto start = Uptime::now();
    auto answer = ask(request(11, Seconds{0.5}));
    {
        const BentClock clock(BentClock::Bend::setForward);
        EXPECT_FALSE(decide(11, Decision::allow));
    }
    const BentClock clock(BentClock::Bend::setBack);
    EXPECT_EQ(answer.get(), std::nullopt);
    EXPECT_GE(Uptime::now() - start, Seconds{0.45}); // The two clocks may drift a little.
    EXPECT_EQ(trace.next(), "removal 11");
    EXPECT_FALSE(decide(11, Decision::allow));
}

TEST_F(ApprovalServerTest, closesOnWhatIsNoNewRequestAndSaysNothing)
{
    auto first = ask(11);
    const auto other = request(12).serialize();
    for (const auto& line : {request(11).serialize(), request(12, Seconds{-1}).serialize(),
             other + "\n" + other, std::string("{}"), std::string(maximumBridgePayload, '[')})
        EXPECT_TRUE(isClosed(sent(line))) << line.substr(0, 80);
    EXPECT_TRUE(decide(11, Decision::deny));
    EXPECT_EQ(first.get(), Decision::deny);
    EXPECT_EQ(trace.next(), "removal 11");
    server.stop();
    EXPECT_TRUE(trace.empty());
}

TEST_F(ApprovalServerTest, endsTheWaitOfAHookThatGoesOrSpeaksAgain)
{
    for (const bool goes : {true, false}) {
        auto connection = sent(request(11).serialize());
        EXPECT_EQ(trace.next(), "request 11");
        if (goes) {
            connection = {};
        } else {
            sendBytes(connection, "\n");
            EXPECT_TRUE(isClosed(connection));
        }
        EXPECT_EQ(trace.next(), "removal 11");
        EXPECT_FALSE(decide(11, Decision::allow));
    }
}

TEST_F(ApprovalServerTest, holdsThirtyTwoAndClosesTheNext)
{
    std::vector<UniqueFd> waiting;
    for (int number = 10; number < 42; ++number) {
        waiting.push_back(sent(request(number).serialize()));
        EXPECT_EQ(trace.next(), "request " + std::to_string(number));
    }
    const auto oneMore = place.connect();
    ASSERT_TRUE(oneMore);
    sendBytes(*oneMore, request(42).serialize() + "\n");
    EXPECT_TRUE(isClosed(*oneMore));

    const auto before = Uptime::now();
    server.stop();
    EXPECT_LT(Uptime::now() - before, Seconds{5});
    for (const auto& connection : waiting) {
        EXPECT_TRUE(isClosed(connection));
        EXPECT_TRUE(trace.next().starts_with("removal "));
    }
    EXPECT_FALSE(place.identity());
}

TEST_F(ApprovalServerTest, startsAgainAfterAStop)
{
    const TransportError running{TransportError::Code::alreadyRunning};
    EXPECT_EQ(running.describe(), "An approval bridge is already running.");
    EXPECT_EQ(server.start({}), running);
    EXPECT_EQ(ApprovalServer(place.directory()).start({}), running);
    server.stop();
    server.stop();
    EXPECT_EQ(client.exchange(request(11)), std::nullopt);
    ASSERT_FALSE(server.start(callbacks()));
    auto answer = ask(11);
    EXPECT_TRUE(decide(11, Decision::allow));
    EXPECT_EQ(answer.get(), Decision::allow);
}

TEST_F(ApprovalServerTest, tellsOnceThatHooksCannotReachIt)
{
    auto waiting = ask(11);
    ASSERT_EQ(::unlink(place.path().c_str()), 0);
    EXPECT_EQ(trace.next(), "unreachable");

    ApprovalServer other(place.directory());
    ASSERT_FALSE(other.start({}));
    EXPECT_TRUE(decide(11, Decision::allow));
    EXPECT_EQ(waiting.get(), Decision::allow);
    EXPECT_EQ(trace.next(), "removal 11");
    server.stop();
    EXPECT_TRUE(trace.empty());
    EXPECT_TRUE(place.isSafe()) << "the other server's path is not this one's to remove";
}

TEST_F(ApprovalServerTest, staysSoundWhenEverythingHappensAtOnce)
{
    std::vector<Answer> hooks;
    for (int number = 10; number < 26; ++number)
        hooks.push_back(std::async(
            std::launch::async, [this, number] { return client.exchange(request(number)); }));
    int accepted = 0;
    for (int i = 0; i < 8; ++i) {
        const auto line = trace.next();
        if (line.starts_with("request ") && decide(std::stoi(line.substr(8)), Decision::allow))
            ++accepted;
    }
    server.stop();
    int allowed = 0;
    for (auto& hook : hooks)
        allowed += hook.get() == Decision::allow ? 1 : 0;
    EXPECT_LE(allowed, accepted);
}

} // namespace
} // namespace notch
