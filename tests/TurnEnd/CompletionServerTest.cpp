// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionServer.h"

#include "TurnEnd/CompletionHookClient.h"
#include "support/CompletionEvents.h"
#include "support/Connections.h"
#include "support/SystemClock.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

using Code = TransportError::Code;

constexpr Seconds ample{30};

std::string line(const CompletionEvent& event)
{
    return event.serialize() + "\n";
}

std::string paddedTo(std::string text, std::size_t size)
{
    text.resize(size, ' ');
    return text;
}

// Lines that tell of no event.
std::vector<std::string> badLines()
{
    const auto good = startOf("bad").serialize();
    return {
        paddedTo(good, CompletionEvent::maximumPayload + 1) + "\n",
        good,
        "",
        "\n",
        "[\n",
        good + "\n ",
        good + "\n" + good + "\n",
        R"({"hook_event_name":"FinalStop","session_id":"s"})"
        "\n",
        line(startOf("b a d")),
        line(startOf("bad", Seconds{3.1})),
        line(startOf("bad", Seconds{-60})),
    };
}

class CompletionServerTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(server.start(printingTo(trace))); }

    // A connection on which these bytes were sent, and nothing else yet.
    UniqueFd sent(std::string_view bytes) const
    {
        auto connection = place.connect(ample);
        EXPECT_TRUE(connection);
        sendBytes(*connection, bytes);
        return std::move(*connection);
    }

    // The line of the next event, which the server reads behind everything sent before it.
    std::string nextAfter(const std::string& session)
    {
        EXPECT_TRUE(client.send(startOf(session)));
        return trace.next();
    }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), turnEndSocketName};
    CompletionHookClient client{place.directory()};
    Trace trace;
    CompletionServer server{place.directory()};
};

TEST_F(CompletionServerTest, acceptsOnlyOneFreshValidEventOfTheRightLength)
{
    for (const auto& bytes : badLines()) {
        sent(bytes);
        EXPECT_EQ(nextAfter("next"), "started session=next") << bytes.substr(0, 200);
    }
    sent(paddedTo(startOf("longest").serialize(), CompletionEvent::maximumPayload) + "\n");
    EXPECT_EQ(trace.next(), "started session=longest");
    const auto pieces = sent("");
    for (const char byte : line(startOf("pieces")))
        sendBytes(pieces, {&byte, 1});
    EXPECT_EQ(trace.next(), "started session=pieces");
}

// The wall clock goes back at every look, so that a deadline on it would never come.
TEST_F(CompletionServerTest, closesAConnectionThatIsSilentOrSlow)
{
    const BentClock clock(BentClock::Bend::setBack);
    EXPECT_TRUE(isClosed(sent("")));
    const auto slow = sent("{");
    const auto start = Uptime::now();
    while (!pollUntil(slow.get(), POLLIN, Uptime::now() + Seconds{0.02}))
        sendBytes(slow, " ");
    EXPECT_LT(Uptime::now() - start, Seconds{5});
}

TEST_F(CompletionServerTest, losesNoGoodEventInAFloodOfBadConnections)
{
    constexpr int flood = 1000;
    // Those that cost their whole 0.15 seconds: four of them at most stand before a good one.
    constexpr int slowEvery = 50;
    constexpr int goodEvery = 100;
    const auto quick = badLines();
    std::vector<UniqueFd> slow;
    for (int i = 1; i <= flood; ++i) {
        if (i % slowEvery == 0)
            slow.push_back(sent(""));
        else
            sent(quick[static_cast<std::size_t>(i) % quick.size()]);
        for (std::size_t odd = 1; odd < slow.size(); odd += 2)
            sendBytes(slow[odd], " "); // Every second one is slow, the others say nothing at all.
        if (i % goodEvery != 0)
            continue;
        const auto session = std::to_string(i);
        const auto connection = place.connect(ample);
        const auto start = Uptime::now();
        sendBytes(*connection, line(startOf(session)));
        EXPECT_EQ(trace.next(), "started session=" + session);
        EXPECT_LT(Uptime::now() - start, Seconds{5});
    }
}

TEST_F(CompletionServerTest, keepsTheOrderOfTheConnections)
{
    for (int i = 0; i < 50; ++i)
        sent(line(startOf(std::to_string(i))));
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(trace.next(), "started session=" + std::to_string(i));
}

// With the monotonic clock stopped, only stop() can end the read.
TEST_F(CompletionServerTest, stopsDuringARead)
{
    const BentClock clock(BentClock::Bend::stoppedUptime);
    const auto silent = sent("{");
    for (int unread = 1; unread > 0; std::this_thread::yield())
        ASSERT_EQ(::ioctl(silent.get(), SIOCOUTQ, &unread), 0);
    server.stop();
    EXPECT_FALSE(place.identity());
}

TEST_F(CompletionServerTest, startsAgainAfterAStop)
{
    EXPECT_EQ(server.start(printingTo(trace)), TransportError{Code::alreadyRunning});
    EXPECT_EQ(nextAfter("first"), "started session=first");
    server.stop();
    server.stop();
    EXPECT_FALSE(client.send(startOf("nobody")));
    ::chmod(place.directory().path().c_str(), 0755);
    EXPECT_EQ(server.start(printingTo(trace)), TransportError{Code::unsafePath});
    ::chmod(place.directory().path().c_str(), 0700);
    ASSERT_FALSE(server.start(printingTo(trace)));
    EXPECT_EQ(nextAfter("second"), "started session=second");
}

TEST_F(CompletionServerTest, startsAndStopsUnderLoad)
{
    const std::jthread hooks([&](const std::stop_token& done) {
        while (!done.stop_requested())
            client.send(startOf("load"));
    });
    for (int i = 0; i < 50; ++i) {
        server.stop();
        ASSERT_FALSE(server.start(printingTo(trace)));
    }
    EXPECT_EQ(trace.next(), "started session=load");
}

} // namespace
} // namespace notch
