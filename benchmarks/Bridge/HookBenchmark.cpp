// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Measures the hook process: its start and end beside floors, the way of a click, and what waiting
// costs. Everything in one run, in a bridge directory of its own.

#include "Bridge/ApprovalServer.h"
#include "support/ChildProcess.h"
#include "support/PrivateBridge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

constexpr std::string_view input =
    R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","session_id":"s-1","cwd":"/a",)"
    R"("tool_input":{"command":"rm -rf ./build","description":"Remove the build directory"}})";

double quantile(std::vector<double> values, double share)
{
    std::ranges::sort(values);
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(std::lround(last * share))];
}

double milliseconds(Seconds time)
{
    return time.count() * 1000;
}

// Seconds from start to exit of a hook whose input is there already.
double startToExit(const std::string& program)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return 0;
    const UniqueFd out(ends[0]);
    UniqueFd in(ends[1]);
    const bool written = ::write(in.get(), input.data(), input.size()) > 0;
    in = {};
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, out.get(), STDIN_FILENO);
    std::string path = program;
    std::string flag = "--hook";
    const std::array<char*, 3> arguments{path.data(), flag.data(), nullptr};
    pid_t pid = -1;
    const auto start = Uptime::now();
    const int failed =
        ::posix_spawn(&pid, path.c_str(), &files, nullptr, arguments.data(), environ);
    int status = 0;
    if (!written || failed != 0 || ::waitpid(pid, &status, 0) != pid || status != 0)
        std::printf("%s failed\n", program.c_str());
    const auto time = Uptime::now() - start;
    ::posix_spawn_file_actions_destroy(&files);
    return milliseconds(time);
}

struct Program {
    const char* name;
    std::string path;
    std::vector<double> times;
};

void printStart(const char* which, const std::vector<Program>& programs, double share)
{
    const double floor = quantile(programs[0].times, share);
    const double hook = quantile(programs[1].times, share);
    std::printf("start to exit, no application, %s of %zu\n", which, programs[0].times.size());
    for (const auto& program : programs) {
        const double time = quantile(program.times, share);
        std::printf("  %-36s %8.3f ms, %5.2f times the floor; --hook is %.2f of it\n", program.name,
            time, time / floor, hook / time);
    }
}

// Turn by turn, so that a busy moment of the machine hits them all.
void measureStart()
{
    constexpr int rounds = 1000;
    std::vector<Program> programs{
        {"static C program, same calls", HOOK_FLOOR, {}},
        {"--hook", PROGRAM_PATH, {}},
#ifdef HOOK_WITH_WINDOW
        {"the same with the window module", HOOK_WITH_WINDOW, {}},
#endif
    };
    for (int round = 0; round < rounds; ++round) {
        for (auto& program : programs)
            program.times.push_back(startToExit(program.path));
    }
    printStart("median", programs, 0.5);
    printStart("quiet tenth", programs, 0.1); // What a busy machine disturbs least.
}

// The resident application's end, which tells when a request is there.
class Resident {
public:
    Resident()
    {
        const auto error = server.start({.onRequest = [this](const ApprovalRequest& request) {
            const std::lock_guard lock(mutex_);
            ids_.push_back(request.id);
            changed_.notify_one();
        }});
        if (error)
            std::printf("%s\n", error->describe().c_str());
    }

    std::string nextRequest()
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !ids_.empty(); });
        auto id = std::move(ids_.back());
        ids_.pop_back();
        return id;
    }

    ApprovalServer server;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> ids_;
};

std::unique_ptr<ChildProcess> waitingHook()
{
    auto hook = std::make_unique<ChildProcess>(PROGRAM_PATH, std::vector<std::string>{"--hook"});
    hook->write(input);
    hook->closeInput();
    return hook;
}

void measureClick()
{
    constexpr int rounds = 300;
    Resident resident;
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const auto hook = waitingHook();
        const auto id = resident.nextRequest();
        if (!hook->fallsAsleep())
            std::printf("the hook does not wait\n");
        const auto start = Uptime::now();
        resident.server.decide(id, Decision::allow);
        if (hook->readLine().empty())
            std::printf("the hook printed nothing\n");
        times.push_back(milliseconds(Uptime::now() - start));
    }
    std::printf(
        "decision stored to the whole line read, %d rounds   median %.3f ms, 99th percentile "
        "%.3f ms\n",
        rounds, quantile(times, 0.5), quantile(times, 0.99));
}

double processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void measureWaiting()
{
    constexpr int hooks = 32;
    constexpr std::chrono::seconds period{20};
    Resident resident;
    std::vector<std::unique_ptr<ChildProcess>> waiting;
    for (int i = 0; i < hooks; ++i) {
        waiting.push_back(waitingHook());
        resident.nextRequest();
    }
    const double before = processorTime();
    std::this_thread::sleep_for(period);
    const double used = processorTime() - before;
    std::printf("%d hooks waiting for %d s   %.3f ms of processor time, %.4f %% of one core\n",
        hooks, static_cast<int>(period.count()), used * 1000,
        used / static_cast<double>(period.count()) * 100);
    const auto start = Uptime::now();
    resident.server.stop();
    std::printf(
        "stop() with %d hooks waiting   %.2f ms\n", hooks, milliseconds(Uptime::now() - start));
}

} // namespace
} // namespace notch

int main()
{
    if (const auto reason = notch::enterPrivateBridge(); !reason.empty()) {
        std::printf("Nothing measured: %s\n", reason.c_str());
        return 1;
    }
    notch::measureStart();
    notch::measureClick();
    notch::measureWaiting();
    return 0;
}
