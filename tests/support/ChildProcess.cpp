// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/ChildProcess.h"

#include "Foundation/Time.h"
#include "Transport/PollTimeout.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <utility>

namespace notch {
namespace {

constexpr Seconds patience{60};

struct Pipe {
    UniqueFd out;
    UniqueFd in;
};

Pipe makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("pipe2 failed");
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

// True once it is; false when that takes too long.
bool isReadable(const UniqueFd& descriptor)
{
    pollfd waited{descriptor.get(), POLLIN, 0};
    return ::poll(&waited, 1, pollTimeout(patience)) > 0;
}

// Nothing at the end of the stream, or when it takes too long.
std::string readSome(const UniqueFd& from, std::size_t most)
{
    std::string some(most, '\0');
    const auto count = isReadable(from) ? ::read(from.get(), some.data(), some.size()) : 0;
    some.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return some;
}

std::string readAll(const UniqueFd& from)
{
    std::string all;
    for (std::string some; from.valid() && !(some = readSome(from, 65536)).empty();)
        all += some;
    return all;
}

} // namespace

ChildProcess::ChildProcess(const std::string& path, std::vector<std::string> arguments)
{
    std::signal(SIGPIPE, SIG_IGN); // A child that has gone is an ordinary thing here.
    auto input = makePipe();
    auto output = makePipe();
    auto errors = makePipe();
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, input.out.get(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, output.in.get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, errors.in.get(), STDERR_FILENO);
    posix_spawnattr_t attributes; // The child starts with the signals that a host gives it.
    ::posix_spawnattr_init(&attributes);
    sigset_t restored;
    ::sigemptyset(&restored);
    ::sigaddset(&restored, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&attributes, &restored);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::string name = path;
    std::vector<char*> list{name.data()};
    for (auto& argument : arguments)
        list.push_back(argument.data());
    list.push_back(nullptr);
    const int failure =
        ::posix_spawn(&pid_, path.c_str(), &files, &attributes, list.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    if (failure != 0)
        throw std::runtime_error("cannot start " + path);
    input_ = std::move(input.in);
    output_ = std::move(output.out);
    errors_ = std::move(errors.out);
}

ChildProcess::~ChildProcess()
{
    if (pid_ < 0)
        return;
    kill(SIGKILL);
    ::waitpid(pid_, nullptr, 0);
}

void ChildProcess::write(std::string_view input)
{
    while (!input.empty()) {
        const auto count = ::write(input_.get(), input.data(), input.size());
        if (count <= 0)
            return;
        input.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string ChildProcess::readLine()
{
    std::string line;
    for (std::string byte; !line.ends_with('\n') && !(byte = readSome(output_, 1)).empty();)
        line += byte;
    return line;
}

void ChildProcess::kill(int signal) const
{
    ::kill(pid_, signal);
}

bool ChildProcess::fallsAsleep() const
{
    for (const auto end = Uptime::now() + patience; Uptime::now() < end;
         std::this_thread::yield()) {
        std::ifstream status("/proc/" + std::to_string(pid_) + "/stat");
        std::string number;
        std::string name;
        char state{};
        if (!(status >> number >> name >> state) || state == 'Z')
            return false;
        if (state == 'S')
            return true;
    }
    return false;
}

ChildProcess::Ending ChildProcess::finish()
{
    closeInput();
    Ending ending{.output = readAll(output_), .errors = readAll(errors_)};
    if (!isReadable(UniqueFd(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)))))
        kill(SIGKILL);
    rusage usage{};
    int status = 0;
    ::wait4(std::exchange(pid_, -1), &status, 0, &usage);
    peakMemory_ = usage.ru_maxrss;
    if (WIFEXITED(status))
        ending.status = WEXITSTATUS(status);
    return ending;
}

ChildProcess::Ending runProgram(
    const std::string& path, std::vector<std::string> arguments, std::string_view input)
{
    ChildProcess child(path, std::move(arguments));
    child.write(input);
    return child.finish();
}

} // namespace notch
