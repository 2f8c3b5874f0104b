// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/Framing.h"

#include <array>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <thread>

namespace notch {
namespace {

constexpr Seconds ample{30};
constexpr Seconds moment{0.05};

FrameLimits within(Seconds time)
{
    return {.deadline = Uptime::now() + time};
}

class Framing : public testing::Test {
protected:
    Framing()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(
            ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()), 0);
        here = UniqueFd(ends[0]);
        there = UniqueFd(ends[1]);
    }

    const std::string largest = std::string(maximumFramePayload, 'x');
    UniqueFd here;
    UniqueFd there;
};

TEST_F(Framing, carriesTheLargestMessage)
{
    std::thread writer([&] { EXPECT_TRUE(writeFrame(there, largest, within(ample))); });
    EXPECT_EQ(readFrame(here, within(ample)), largest);
    writer.join();
}

TEST_F(Framing, sendsNothingOfAMessageThatIsTooLarge)
{
    EXPECT_FALSE(writeFrame(there, largest + "x", within(ample)));
    there = {};
    char byte{};
    EXPECT_EQ(::recv(here.get(), &byte, 1, 0), 0);
}

TEST_F(Framing, readsTheLineOfAPeerThatIsGone)
{
    EXPECT_TRUE(writeFrame(there, "abc", within(ample)));
    there = {};
    EXPECT_EQ(readFrame(here, within(ample)), "abc");
    EXPECT_FALSE(readFrame(here, within(ample)));
    EXPECT_FALSE(writeFrame(here, "abc", within(ample))) << "and no signal ends the process";
}

TEST_F(Framing, endsAtTheDeadlineOrWithTheFlag)
{
    EXPECT_FALSE(readFrame(here, within(moment)));
    EXPECT_FALSE(readFrame(here, within(Seconds{0})));
    EXPECT_FALSE(writeFrame(there, largest, within(moment))) << "more than the socket holds";

    const auto stop = PollableFlag::make();
    stop->raise();
    const FrameLimits limits{.deadline = Uptime::now() + ample, .stop = &*stop};
    EXPECT_FALSE(readFrame(there, limits));
    EXPECT_FALSE(writeFrame(here, "abc", limits));
    EXPECT_LT(Uptime::now(), limits.deadline);
}

} // namespace
} // namespace notch
