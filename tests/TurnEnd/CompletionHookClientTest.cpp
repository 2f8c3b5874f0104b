// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionHookClient.h"

#include "Bridge/Framing.h"
#include "Bridge/ListeningSocket.h"
#include "Foundation/UUID.h"
#include "TurnEnd/CompletionServer.h"
#include "support/ChildProcess.h"
#include "support/EventTrace.h"
#include "support/SystemClock.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

constexpr Seconds ample{30};
// What all limits of a hook come to, and time for a busy machine.
constexpr Seconds inTime{5};
const std::string startInput = R"({"hook_event_name":"UserPromptSubmit","session_id":"s"})";

struct Pipe {
    UniqueFd out;
    UniqueFd in;
};

Pipe makePipe()
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

void writeAll(const UniqueFd& to, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = ::write(to.get(), bytes.data(), bytes.size());
        if (count <= 0)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

CompletionEvent startOf(const std::string& session)
{
    return {.id = UUID::random().text(), .sessionID = session, .observedAt = Date::now()};
}

class CompletionHookClientTest : public testing::Test {
protected:
    // What the host does with a hook's stdin; the flag is raised when the hook has ended.
    using Host = std::function<void(Pipe&, const PollableFlag& ended)>;

    Seconds timeOfRun(const Host& host) const
    {
        auto pipe = makePipe();
        const auto input = std::move(pipe.out);
        const auto ended = PollableFlag::make();
        std::thread writer([&] { host(pipe, *ended); });
        const auto start = Uptime::now();
        client.run(input.get());
        const auto time = Uptime::now() - start;
        ended->raise();
        writer.join();
        return time;
    }

    void run(const std::string& input) const
    {
        timeOfRun([&](Pipe& pipe, const auto&) {
            writeAll(pipe.in, input);
            pipe.in = {};
        });
    }

    ListeningSocket listen(int backlog = 4) const
    {
        auto listening = ListeningSocket::open(place, backlog);
        EXPECT_TRUE(listening.ok());
        return std::move(listening).value();
    }

    // What the next connection says; nothing when there is none.
    static std::optional<std::string> lineAt(const ListeningSocket& listening)
    {
        const auto stop = PollableFlag::make();
        const auto connection = listening.accept(*stop, Seconds{0});
        return connection ? readFrame(*connection, {.deadline = Uptime::now() + ample})
                          : std::nullopt;
    }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), turnEndSocketName};
    CompletionHookClient client{place.directory()};
};

TEST_F(CompletionHookClientTest, sendsTheEventOfAWholeInput)
{
    EventTrace trace;
    CompletionServer server(place.directory());
    ASSERT_FALSE(server.start(trace.callback()));
    auto longest = startInput;
    longest.resize(CompletionEvent::maximumHookInput, ' ');
    for (const auto& input : {startInput, longest}) {
        run(input);
        EXPECT_EQ(trace.next(), "started session=s") << input.size();
    }
    run(longest + " ");
    run(R"({"hook_event_name":"Stop","session_id":"s"})");
    run("");
    run(R"({"hook_event_name":"FinalStop","session_id":"t","final_stop_reason":"failed"})");
    EXPECT_EQ(trace.next(), "ended session=t reason=failed");
}

TEST_F(CompletionHookClientTest, sendsTheLongestValidEvent)
{
    const auto listening = listen();
    const auto longest = std::string(256, 'a');
    const CompletionEvent event{.id = UUID::random().text(),
        .sessionID = longest,
        .generationID = longest,
        .agentID = longest,
        .kind = CompletionEvent::Kind::ended,
        .reason = CompletionEvent::Reason::interrupted,
        .observedAt = Date::now()};
    EXPECT_TRUE(client.send(event));
    EXPECT_EQ(CompletionEvent::parse(lineAt(listening).value_or("")), event);
}

TEST_F(CompletionHookClientTest, sendsNothingThatIsNotValidOrSafe)
{
    EXPECT_FALSE(client.send(startOf("nobody-listens")));
    const auto listening = listen();
    EXPECT_FALSE(client.send(startOf("not safe")));
    ::chmod(place.path().c_str(), 0666);
    EXPECT_FALSE(client.send(startOf("s")));
    ::chmod(place.path().c_str(), 0600);
    ::chmod(place.directory().path().c_str(), 0755);
    EXPECT_FALSE(client.send(startOf("s")));
    ::chmod(place.directory().path().c_str(), 0700);
    EXPECT_EQ(lineAt(listening), std::nullopt);
    EXPECT_TRUE(client.send(startOf("s")));
}

// Also when the wall clock is set at every look.
TEST_F(CompletionHookClientTest, givesUpOnInputThatDoesNotEndInTime)
{
    struct Row {
        const char* name;
        Host host;
    };
    const auto listening = listen();
    for (const auto& row : {
             Row{"held open", [](Pipe&, const auto&ended) { ended.wait(ample); }},
             Row{"complete, yet held open",
                 [](Pipe&pipe, const auto&ended) {
                     writeAll(pipe.in, startInput);
                     ended.wait(ample);
                 }},
             Row{"trickling",
                 [](Pipe&pipe, const auto&ended) {
                     while (!ended.wait(Seconds{0.01}))
                         writeAll(pipe.in, " ");
                 }},
         }) {
        for (const auto bend : {BentClock::Bend::setBack, BentClock::Bend::setForward}) {
            const BentClock clock(bend);
            const auto time = timeOfRun(row.host);
            EXPECT_GE(time, Seconds{0.3}) << row.name;
            EXPECT_LT(time, inTime) << row.name;
            EXPECT_EQ(lineAt(listening), std::nullopt) << row.name;
        }
    }
}

TEST_F(CompletionHookClientTest, takesInputInPiecesWhileTheClockIsSet)
{
    const auto listening = listen();
    const BentClock clock(BentClock::Bend::setForward);
    timeOfRun([](Pipe& pipe, const auto& ended) {
        for (const char byte : startInput) {
            writeAll(pipe.in, {&byte, 1});
            ended.wait(Seconds{0.001});
        }
        pipe.in = {};
    });
    EXPECT_TRUE(lineAt(listening));
}

TEST_F(CompletionHookClientTest, givesUpOnAClosedDescriptor)
{
    const int closed = makePipe().out.get();
    const auto start = Uptime::now();
    client.run(closed);
    EXPECT_LT(Uptime::now() - start, inTime);
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

// A server that SIGSTOP holds still takes connections: the system does it.
TEST_F(CompletionHookClientTest, isNotHeldByAServerThatIsStopped)
{
    ChildProcess server(SHOW_TURN_ENDS, {place.directory().path()});
    server.readLine(); // It listens by then.
    server.kill(SIGSTOP);
    for (int i = 0; i < 20; ++i) { // Until the backlog is full, and on.
        const auto start = Uptime::now();
        client.send(startOf("stopped"));
        EXPECT_LT(Uptime::now() - start, inTime);
    }
}

} // namespace
} // namespace notch
