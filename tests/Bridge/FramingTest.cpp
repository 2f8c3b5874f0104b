// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/Framing.h"

#include <array>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace notch {
namespace {

constexpr Seconds ample{30};
constexpr Seconds moment{0.05};

struct Connection {
    UniqueFd here;
    UniqueFd there;
};

Connection connected()
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()), 0);
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

FrameLimits within(Seconds time)
{
    return {.deadline = Uptime::now() + time};
}

TEST(Framing, carriesTheLargestMessage)
{
    const auto connection = connected();
    const std::string payload(maximumBridgePayload, 'x');
    std::thread writer([&] { EXPECT_TRUE(writeFrame(connection.there, payload, within(ample))); });
    EXPECT_EQ(readFrame(connection.here, within(ample)), payload);
    writer.join();
}

TEST(Framing, sendsNothingOfAMessageThatIsTooLarge)
{
    auto connection = connected();
    const std::string payload(maximumBridgePayload + 1, 'x');
    EXPECT_FALSE(writeFrame(connection.there, payload, within(ample)));
    connection.there = {};
    char byte{};
    EXPECT_EQ(::recv(connection.here.get(), &byte, 1, 0), 0);
}

TEST(Framing, readsNothingFromAPeerThatGoesBeforeTheLineEnds)
{
    for (const std::string_view sent : {"", "abc"}) {
        auto connection = connected();
        ::send(connection.there.get(), sent.data(), sent.size(), 0);
        connection.there = {};
        EXPECT_FALSE(readFrame(connection.here, within(ample))) << sent;
    }
}

TEST(Framing, readsTheLineOfAPeerThatIsGone)
{
    auto connection = connected();
    EXPECT_TRUE(writeFrame(connection.there, "abc", within(ample)));
    connection.there = {};
    EXPECT_EQ(readFrame(connection.here, within(ample)), "abc");
}

TEST(Framing, endsAtTheDeadline)
{
    const auto connection = connected();
    EXPECT_FALSE(readFrame(connection.here, within(moment)));
    EXPECT_FALSE(readFrame(connection.here, within(Seconds{0})));
    const std::string moreThanTheSocketHolds(maximumBridgePayload, 'x');
    EXPECT_FALSE(writeFrame(connection.there, moreThanTheSocketHolds, within(moment)));
}

TEST(Framing, endsWhenTheFlagIsRaised)
{
    const auto connection = connected();
    const auto stop = PollableFlag::make();
    ASSERT_TRUE(stop);
    FrameLimits limits = within(ample);
    limits.stop = &*stop;
    std::thread raiser([&] { stop->raise(); });
    EXPECT_FALSE(readFrame(connection.here, limits));
    EXPECT_LT(Uptime::now(), limits.deadline);
    EXPECT_FALSE(writeFrame(connection.there, "abc", limits));
    raiser.join();
}

TEST(Framing, failsWithoutASignalWhenThePeerIsGone)
{
    auto connection = connected();
    connection.there = {};
    EXPECT_FALSE(writeFrame(connection.here, "abc", within(ample)));
}

} // namespace
} // namespace notch
