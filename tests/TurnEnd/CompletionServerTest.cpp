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
#include <sys/resource.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

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

    // The line of the next event, which the server reads after everything sent before it.
    std::string nextAfter(const std::string& session)
    {
        EXPECT_TRUE(client.send(startOf(session)));
        return trace.next();
    }

    TemporaryDirectory temporary;
    SocketPath place{SocketDirectory(temporary / "bridge"), turnEndSocketName};
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

// Far more of them than the process may have descriptors, silent and slow ones between them.
TEST_F(CompletionServerTest, losesNoGoodEventInAFloodOfBadConnections)
{
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{.rlim_cur = 128, .rlim_max = before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    const auto bad = badLines();
    for (std::size_t i = 0; i < 500; ++i)
        sent(bad[i % bad.size()]);
    const auto silent = sent("");
    const auto slow = sent(" ");
    EXPECT_EQ(nextAfter("next"), "started session=next");
    ::setrlimit(RLIMIT_NOFILE, &before);
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

TEST_F(CompletionServerTest, startsAndStopsUnderLoad)
{
    const std::jthread hooks([&](const std::stop_token& done) {
        while (!done.stop_requested())
            client.send(startOf("load"));
    });
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(server.start(printingTo(trace)));
        server.stop();
        ASSERT_FALSE(server.start(printingTo(trace)));
    }
    EXPECT_EQ(trace.next(), "started session=load");
}

} // namespace
} // namespace notch
