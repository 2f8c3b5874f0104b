// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What a turn-end hook costs the host, beside the least that such a process can cost, and how long
// an event takes from the hook's write to the server's callback.

#include "Foundation/UUID.h"
#include "TurnEnd/CompletionHookClient.h"
#include "TurnEnd/CompletionServer.h"
#include "support/PrivateBridge.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

namespace notch {
namespace {

constexpr std::string_view input =
    R"({"hook_event_name":"FinalStop","session_id":"5f0c","generation_id":"g-17",)"
    R"("final_stop_reason":"completed","cwd":"/home/a/project","transcript":"t.jsonl"})";

// Counts what arrives.
class Server {
public:
    Server()
    {
        failed_ = server_
                      .start([this](const CompletionEvent&) {
                          lastAt_ = Uptime::now().seconds;
                          ++arrived_;
                          arrived_.notify_one();
                      })
                      .has_value();
    }

    bool failed() const { return failed_; }
    long arrived() const { return arrived_; }
    // When the next event after the first `count` came.
    Uptime awaitMoreThan(long count) const
    {
        arrived_.wait(count);
        return {lastAt_};
    }

private:
    std::atomic<double> lastAt_ = 0;
    std::atomic<long> arrived_ = 0;
    CompletionServer server_; // Last: its callback uses the others.
    bool failed_ = false;
};

// Starts the program with the input on its stdin and waits for its end; false when it failed.
bool runHook(std::vector<const char*> arguments)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return false;
    UniqueFd out(ends[0]);
    UniqueFd in(ends[1]);
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, out.get(), STDIN_FILENO);
    pid_t pid = -1;
    const int failure = ::posix_spawn(
        &pid, arguments[0], &files, nullptr, const_cast<char* const*>(arguments.data()), environ);
    ::posix_spawn_file_actions_destroy(&files);
    const bool written = ::write(in.get(), input.data(), input.size()) > 0;
    in = {};
    int status = -1;
    return failure == 0 && ::waitpid(pid, &status, 0) == pid && status == 0 && written;
}

void measure(benchmark::State& state, const std::vector<const char*>& arguments)
{
    const Server server;
    if (server.failed())
        state.SkipWithError("no server");
    for (auto _ : state) {
        if (!runHook(arguments))
            state.SkipWithError("the hook failed");
    }
}

void hookProcess(benchmark::State& state)
{
    measure(state, {HOOK_PROGRAM, "--completion-hook", "--source", "quillmoss", "--owner-marker",
                       "quillmoss-notch-completion-v1"});
}

void plainProcess(benchmark::State& state)
{
    measure(state, {PLAIN_PROGRAM});
}

void delivery(benchmark::State& state)
{
    const Server server;
    const CompletionHookClient client;
    std::vector<double> latencies;
    for (auto _ : state) {
        const auto before = server.arrived();
        const auto start = Uptime::now(); // Before the write: the callback may be the faster one.
        const bool sent =
            client.send({.id = UUID::random().text(), .sessionID = "s", .observedAt = Date::now()});
        if (!sent) {
            state.SkipWithError("not sent");
            break;
        }
        latencies.push_back((server.awaitMoreThan(before) - start).count());
    }
    std::ranges::sort(latencies);
    const auto quantile = [&](std::size_t percent) {
        return latencies.empty() ? 0 : latencies[(latencies.size() - 1) * percent / 100];
    };
    state.counters["median_s"] = quantile(50);
    state.counters["p99_s"] = quantile(99);
}

BENCHMARK(plainProcess)->UseRealTime();
BENCHMARK(hookProcess)->UseRealTime();
BENCHMARK(delivery)->UseRealTime();

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    if (const auto reason = notch::enterPrivateBridge(); !reason.empty()) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
