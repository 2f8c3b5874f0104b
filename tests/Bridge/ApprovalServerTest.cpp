// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"

#include "Bridge/Framing.h"
#include "Bridge/HookClient.h"
#include "Bridge/PollTimeout.h"
#include "support/TemporaryDirectory.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <future>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

namespace notch {
namespace {

constexpr std::chrono::seconds ample{30};

// What the server's callbacks said, one line each, in order.
class Trace {
public:
    ApprovalBridge::Callbacks callbacks()
    {
        return {
            .onRequest = [this](const ApprovalRequest& request) { add("request " + request.id); },
            .onRemoval = [this](std::string id) { add("removal " + std::move(id)); },
            .onUnreachable = [this] { add("unreachable"); },
        };
    }

    // The next line that was not taken yet; "nothing" when none comes.
    std::string next()
    {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, ample, [this] { return !lines_.empty(); }))
            return "nothing";
        auto line = std::move(lines_.front());
        lines_.pop_front();
        return line;
    }
    bool empty()
    {
        const std::lock_guard lock(mutex_);
        return lines_.empty();
    }

private:
    void add(std::string line)
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(std::move(line));
        changed_.notify_one();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::string> lines_;
};

ApprovalRequest requestWith(char lastDigit, Seconds lifetime = Seconds{30})
{
    return {
        .id = std::string("0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5") + lastDigit,
        .toolName = "Bash",
        .toolInputJSON = "{}",
        .eventName = "PermissionRequest",
        .expiresAt = Date::now() + lifetime,
    };
}

class ApprovalServerTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.start(trace.callbacks())); }

    std::future<std::optional<Decision>> ask(const ApprovalRequest& request) const
    {
        return std::async(std::launch::async, [this, request] { return client.exchange(request); });
    }

    // A connection on which the line was sent, as a hook does.
    UniqueFd sent(std::string_view line) const
    {
        auto connection = place.connect();
        EXPECT_TRUE(connection && writeFrame(*connection, line, {.deadline = deadline()}));
        return std::move(connection).value_or(UniqueFd());
    }

    // True when the server closes the connection without a byte.
    static bool isClosed(const UniqueFd& connection)
    {
        pollfd waited{connection.get(), POLLIN, 0};
        char byte{};
        return ::poll(&waited, 1, pollTimeout(ample)) > 0
            && ::recv(connection.get(), &byte, 1, MSG_DONTWAIT) <= 0;
    }

    static Uptime deadline() { return Uptime::now() + Seconds{ample}; }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), approvalSocketName};
    HookClient client{place.directory()};
    Trace trace;
    ApprovalServer server{place.directory()};
};

TEST_F(ApprovalServerTest, relaysTheFirstDecisionOnly)
{
    struct Row {
        Decision first;
        std::optional<Decision> answer;
    };
    char digit = '0';
    for (const auto& row : {Row{Decision::allow, Decision::allow},
             Row{Decision::deny, Decision::deny}, Row{Decision::passthrough, std::nullopt}}) {
        const auto request = requestWith(digit++);
        auto answer = ask(request);
        EXPECT_EQ(trace.next(), "request " + request.id);
        EXPECT_TRUE(server.decide(request.id, row.first));
        EXPECT_FALSE(server.decide(request.id, Decision::allow));
        EXPECT_EQ(answer.get(), row.answer) << name(row.first);
        EXPECT_EQ(trace.next(), "removal " + request.id);
        EXPECT_FALSE(server.decide(request.id, Decision::allow));
    }
}

TEST_F(ApprovalServerTest, decidesEachRequestForItself)
{
    auto first = ask(requestWith('1'));
    EXPECT_EQ(trace.next(), "request " + requestWith('1').id);
    auto second = ask(requestWith('2'));
    EXPECT_EQ(trace.next(), "request " + requestWith('2').id);
    EXPECT_FALSE(server.decide(requestWith('3').id, Decision::allow));
    EXPECT_TRUE(server.decide(requestWith('2').id, Decision::deny));
    EXPECT_EQ(second.get(), Decision::deny);
    EXPECT_TRUE(server.decide(requestWith('1').id, Decision::allow));
    EXPECT_EQ(first.get(), Decision::allow);
}

TEST_F(ApprovalServerTest, letsARequestLapse)
{
    const auto request = requestWith('1', Seconds{0.2});
    auto answer = ask(request);
    EXPECT_EQ(trace.next(), "request " + request.id);
    EXPECT_EQ(answer.get(), std::nullopt);
    EXPECT_GE(Date::now(), request.expiresAt);
    EXPECT_EQ(trace.next(), "removal " + request.id);
    EXPECT_FALSE(server.decide(request.id, Decision::allow));
}

TEST_F(ApprovalServerTest, closesOnWhatIsNoRequestAndSaysNothing)
{
    const auto good = requestWith('1').serialize();
    const auto twice = std::string(good).append("\n").append(good);
    for (const auto& line : {std::string(), std::string("{}"), std::string("x"),
             good.substr(0, good.size() - 1), twice, good + "\nx",
             requestWith('1', Seconds{-1}).serialize(), std::string(maximumBridgePayload, '[')})
        EXPECT_TRUE(isClosed(sent(line))) << line.substr(0, 80);
    server.stop();
    EXPECT_TRUE(trace.empty());
}

TEST_F(ApprovalServerTest, dropsASecondRequestWithTheSameId)
{
    const auto request = requestWith('1');
    auto first = ask(request);
    EXPECT_EQ(trace.next(), "request " + request.id);
    EXPECT_TRUE(isClosed(sent(request.serialize())));
    EXPECT_TRUE(server.decide(request.id, Decision::deny));
    EXPECT_EQ(first.get(), Decision::deny);
    EXPECT_EQ(trace.next(), "removal " + request.id);
}

TEST_F(ApprovalServerTest, endsTheWaitOfAHookThatGoesOrSpeaksAgain)
{
    const auto request = requestWith('1');
    auto gone = sent(request.serialize());
    EXPECT_EQ(trace.next(), "request " + request.id);
    gone = {};
    EXPECT_EQ(trace.next(), "removal " + request.id);

    const auto talking = sent(request.serialize());
    EXPECT_EQ(trace.next(), "request " + request.id);
    ::send(talking.get(), "\n", 1, MSG_NOSIGNAL);
    EXPECT_TRUE(isClosed(talking));
    EXPECT_EQ(trace.next(), "removal " + request.id);
    EXPECT_FALSE(server.decide(request.id, Decision::allow));
}

TEST_F(ApprovalServerTest, holdsThirtyTwoAndClosesTheNext)
{
    std::deque<UniqueFd> waiting;
    constexpr std::string_view digits = "0123456789ABCDEFGHIJKLMNOPQRSTUV";
    for (const char digit : digits) {
        auto request = requestWith('0');
        request.id = "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E" + std::to_string(10 + digits.find(digit));
        waiting.push_back(sent(request.serialize()));
        EXPECT_EQ(trace.next(), "request " + request.id);
    }
    const auto oneMore = place.connect();
    ASSERT_TRUE(oneMore);
    EXPECT_TRUE(isClosed(*oneMore));

    const auto before = Uptime::now();
    server.stop();
    EXPECT_LT(Uptime::now() - before, Seconds{5});
    for (const auto& connection : waiting)
        EXPECT_TRUE(isClosed(connection));
    for (std::size_t i = 0; i < waiting.size(); ++i)
        EXPECT_EQ(trace.next().substr(0, 8), "removal ");
    EXPECT_FALSE(place.identity());
}

TEST_F(ApprovalServerTest, startsAgainAfterAStop)
{
    ApprovalServer second(place.directory());
    EXPECT_EQ(second.start({})->describe(), "An approval bridge is already running.");
    EXPECT_EQ(server.start({}), (TransportError{TransportError::Code::alreadyRunning}));
    server.stop();
    server.stop();
    EXPECT_FALSE(second.start({}));
    EXPECT_EQ(server.start({}), (TransportError{TransportError::Code::alreadyRunning}));
    second.stop();
    ASSERT_FALSE(server.start(trace.callbacks()));
    auto answer = ask(requestWith('1'));
    EXPECT_EQ(trace.next(), "request " + requestWith('1').id);
    EXPECT_TRUE(server.decide(requestWith('1').id, Decision::allow));
    EXPECT_EQ(answer.get(), Decision::allow);
}

TEST_F(ApprovalServerTest, tellsOnceThatHooksCannotReachIt)
{
    auto waiting = ask(requestWith('1'));
    EXPECT_EQ(trace.next(), "request " + requestWith('1').id);
    ASSERT_EQ(::unlink(place.path().c_str()), 0);
    EXPECT_EQ(trace.next(), "unreachable");

    ApprovalServer other(place.directory());
    ASSERT_FALSE(other.start({}));
    EXPECT_TRUE(server.decide(requestWith('1').id, Decision::allow));
    EXPECT_EQ(waiting.get(), Decision::allow);
    EXPECT_EQ(trace.next(), "removal " + requestWith('1').id);
    server.stop();
    EXPECT_TRUE(trace.empty());
    EXPECT_TRUE(place.isSafe()) << "the other server's path is not this one's to remove";
}

TEST_F(ApprovalServerTest, staysSoundWhenEverythingHappensAtOnce)
{
    std::atomic<int> allowed = 0;
    std::vector<std::thread> hooks;
    for (const char digit : std::string_view("0123456789ABCDEF"))
        hooks.emplace_back([&, digit] {
            if (client.exchange(requestWith(digit)) == Decision::allow)
                ++allowed;
        });
    int accepted = 0;
    for (int i = 0; i < 8; ++i) {
        const auto line = trace.next();
        if (line.starts_with("request ") && server.decide(line.substr(8), Decision::allow))
            ++accepted;
    }
    server.stop();
    for (auto& hook : hooks)
        hook.join();
    EXPECT_LE(allowed, accepted);
}

} // namespace
} // namespace notch
