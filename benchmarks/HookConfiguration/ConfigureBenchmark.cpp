// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// A whole --configure --apply on a small file, beside a static C program that makes the same system
// calls. The files lie in memory, so that fsync costs nothing; both see a private account database,
// in a mount namespace of this program's own.

#include "support/SettingsFile.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sched.h>
#include <spawn.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace notch {
namespace {

constexpr const char* settingsText =
    R"({"model":"x","hooks":{"Stop":[{"hooks":[{"type":"command","command":"true"}]}]}})";

bool hasPrivateAccount(const std::string& home)
{
    const auto user = std::to_string(::getuid());
    if (::unshare(CLONE_NEWNS) != 0
        || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return false;
    const auto accounts = home + "/passwd";
    std::ofstream(accounts) << "user:x:" << user << ":0::" << home << ":/bin/sh\n";
    return ::mount(accounts.c_str(), "/etc/passwd", nullptr, MS_BIND, nullptr) == 0;
}

// Seconds of processor time that the process took, which other programs hardly disturb; nothing if
// it did not end with status 0.
std::optional<double> processorTime(std::vector<std::string> command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::array<char*, 1> environment{nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = -1;
    rusage usage{};
    if (::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environment.data())
        == 0)
        ::wait4(child, &status, 0, &usage);
    ::posix_spawn_file_actions_destroy(&actions);
    if (status != 0)
        return std::nullopt;
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void apply(
    benchmark::State& state, const SettingsFile& settings, const std::vector<std::string>& command)
{
    for (auto _ : state) {
        settings.write(settingsText);
        const auto taken = processorTime(command);
        if (!taken)
            state.SkipWithError("the program failed");
        state.SetIterationTime(taken.value_or(0));
    }
}

} // namespace
} // namespace notch

int main(int count, char** arguments)
{
    const notch::SettingsFile settings(notch::settingsText);
    if (!notch::hasPrivateAccount(settings.home())) {
        std::fputs("needs a mount namespace of its own; run it as root\n", stderr);
        return 1;
    }
    const auto bench = [&](const char* name, const std::vector<std::string>& command) {
        benchmark::RegisterBenchmark(
            name, [&settings, command](
                      benchmark::State& state) { notch::apply(state, settings, command); })
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    };
    bench("floor", {FLOOR_PATH, settings.directory()});
    bench("configure", {PROGRAM_PATH, "--configure", "quillmoss", "--apply"});
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
