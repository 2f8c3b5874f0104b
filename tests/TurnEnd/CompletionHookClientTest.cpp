// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionHookClient.h"

#include "Transport/Framing.h"
#include "Transport/ListeningSocket.h"
#include "support/CompletionEvents.h"
#include "support/SystemClock.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace notch {
namespace {

constexpr Seconds ample{30};
// What all limits of a hook come to, and time for a busy machine.
constexpr Seconds inTime{5};
const std::string startInput = R"({"hook_event_name":"UserPromptSubmit","session_id":"s"})";

void writeAll(const UniqueFd& to, std::string_view bytes)
{
    EXPECT_EQ(::write(to.get(), bytes.data(), bytes.size()), std::ssize(bytes));
}

class CompletionHookClientTest : public testing::Test {
protected:
    // What the host does with a hook's stdin; the flag is raised when the hook has ended.
    using Host = std::function<void(const UniqueFd& pipe, const PollableFlag& ended)>;

    // How long a hook runs whose stdin is closed when the host has done its part.
    Seconds timeOfRun(const Host& host) const
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const UniqueFd input(ends[0]);
        const auto ended = PollableFlag::make();
        std::thread writer([&] { host(UniqueFd(ends[1]), *ended); });
        const auto start = Uptime::now();
        client.run(input.get());
        const auto time = Uptime::now() - start;
        ended->raise();
        writer.join();
        return time;
    }

    ListeningSocket listen(int backlog = 4) const
    {
        auto listening = ListeningSocket::open(place, backlog);
        EXPECT_TRUE(listening.ok());
        return std::move(listening).value();
    }

    // The event that the next connection tells of, as printed(); "" when there is none.
    static std::string nextAt(const ListeningSocket& listening)
    {
        const auto never = PollableFlag::make();
        const auto connection = listening.accept(*never, Seconds{0});
        const auto line =
            connection ? readFrame(*connection, {.deadline = Uptime::now() + ample}) : std::nullopt;
        const auto event = CompletionEvent::parse(line.value_or(""));
        return event ? printed(*event) : "";
    }

    TemporaryDirectory temporary;
    SocketPath place{SocketDirectory(temporary / "bridge"), turnEndSocketName};
    CompletionHookClient client{place.directory()};
};

TEST_F(CompletionHookClientTest, sendsTheEventOfAWholeInput)
{
    const auto listening = listen();
    auto longest = startInput;
    longest.resize(CompletionEvent::maximumHookInput, ' ');
    const std::string longestToken(256, 'a');
    for (const auto& [input, event] : std::vector<std::pair<std::string, std::string>>{
             {startInput, "started session=s"},
             {longest, "started session=s"},
             {longest + " ", ""},
             {"", ""},
             {R"({"hook_event_name":"FinalStop","final_stop_reason":"interrupted","session_id":")"
                     + longestToken + R"(","generation_id":")" + longestToken + R"(","agent_id":")"
                     + longestToken + "\"}",
                 "ended session=" + longestToken + " generation=" + longestToken
                     + " agent=" + longestToken + " reason=interrupted"},
         }) {
        timeOfRun([&](const auto& pipe, const auto&) { writeAll(pipe, input); });
        EXPECT_EQ(nextAt(listening), event) << input.substr(0, 100);
    }
}

TEST_F(CompletionHookClientTest, sendsNothingThatIsNotValid)
{
    EXPECT_FALSE(client.send(startOf("nobody-listens")));
    const auto listening = listen();
    EXPECT_FALSE(client.send(startOf("not safe")));
    EXPECT_EQ(nextAt(listening), "");
}

// Also when the wall clock is set at every look: neither sooner nor later.
TEST_F(CompletionHookClientTest, givesUpOnInputThatDoesNotEndInTime)
{
    const auto listening = listen();
    const Host silent = [](const auto&, const auto& ended) { ended.wait(ample); };
    const Host complete = [](const auto& pipe, const auto& ended) {
        writeAll(pipe, startInput);
        ended.wait(ample);
    };
    const Host trickling = [](const auto& pipe, const auto& ended) {
        while (!ended.wait(Seconds{0.01}))
            writeAll(pipe, " ");
    };
    for (const auto& host : {silent, complete, trickling}) {
        for (const auto bend : {BentClock::Bend::setBack, BentClock::Bend::setForward}) {
            const BentClock clock(bend);
            const auto time = timeOfRun(host);
            EXPECT_GE(time, Seconds{0.3});
            EXPECT_LT(time, inTime);
            EXPECT_EQ(nextAt(listening), "");
        }
    }
}

TEST_F(CompletionHookClientTest, waitsShortlyForRoomInTheBacklog)
{
    const auto listening = listen(0);
    const auto never = PollableFlag::make();
    std::vector<UniqueFd> waiting;
    const auto fill = [&] {
        while (auto connection = place.connect())
            waiting.push_back(std::move(*connection));
    };
    fill();
    const auto start = Uptime::now();
    EXPECT_FALSE(client.send(startOf("full")));
    EXPECT_GE(Uptime::now() - start, Seconds{0.07}); // 0.08, as the kernel's ticks round it.
    EXPECT_LT(Uptime::now() - start, inTime);

    // On a busy machine room may come too late for a hook: once is enough.
    bool sent = false;
    for (int attempt = 0; attempt < 5 && !sent; ++attempt) {
        fill();
        std::thread hook([&] { sent = client.send(startOf("room")); });
        never->wait(Seconds{0.02});
        listening.accept(*never, Seconds{0});
        hook.join();
    }
    EXPECT_TRUE(sent);
}

} // namespace
} // namespace notch
