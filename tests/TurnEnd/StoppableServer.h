// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/BridgeDirectory.h"
#include "Foundation/UniqueFd.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {

// A turn-end server in a process of its own, so that a test can stop it with a signal.
class StoppableServer {
public:
    // Returns when the server listens.
    explicit StoppableServer(const BridgeDirectory& directory)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const UniqueFd out(ends[0]);
        const UniqueFd in(ends[1]);
        posix_spawn_file_actions_t actions{};
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, in.get(), STDOUT_FILENO);
        std::string program = SHOW_TURN_ENDS;
        std::string argument = directory.path();
        std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
        EXPECT_EQ(
            ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, arguments.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
        char byte{};
        EXPECT_EQ(::read(out.get(), &byte, 1), 1); // It says that it waits.
    }
    ~StoppableServer()
    {
        signal(SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    StoppableServer(const StoppableServer&) = delete;
    StoppableServer& operator=(const StoppableServer&) = delete;

    void signal(int number) const
    {
        if (pid_ > 0) // Any other number means a group or everybody.
            ::kill(pid_, number);
    }

private:
    pid_t pid_ = -1;
};

} // namespace notch
