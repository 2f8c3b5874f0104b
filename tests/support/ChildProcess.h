// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"

#include <ostream>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace notch {

// A program under test as the host runs it: with pipes for its three streams.
//
//   ChildProcess hook(program, {"--hook"});
//   hook.write(input);
//   const auto ending = hook.finish();
class ChildProcess {
public:
    struct Ending {
        int status = -1; // Of exit(3); -1 after a signal.
        std::string output;
        std::string errors;
        bool operator==(const Ending&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Ending& ending)
        {
            return out << ending.status << '\n' << ending.output << ending.errors;
        }
    };

    // `path` is also the first argument.
    explicit ChildProcess(const std::string& path, std::vector<std::string> arguments = {});
    ~ChildProcess(); // Kills what still runs.
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Waits for the child to take it; what a child that has gone did not take is lost.
    void write(std::string_view input);
    void closeInput() { input_ = {}; }
    void closeOutput() { output_ = {}; }
    // The next line of the output with its line feed, once it is there; less at the end of it.
    std::string readLine();
    void kill(int signal) const;
    // True once the child sleeps in a system call; false if it ends or does not for a long time.
    bool fallsAsleep() const;

    // Closes the input and waits for the end. A child that takes too long is killed.
    Ending finish();
    // Of resident memory, in kilobytes; after finish().
    long peakMemory() const { return peakMemory_; }

private:
    pid_t pid_ = -1;
    long peakMemory_ = 0;
    UniqueFd input_;
    UniqueFd output_;
    UniqueFd errors_;
};

// A child from start to end with this input.
ChildProcess::Ending runProgram(
    const std::string& path, std::vector<std::string> arguments = {}, std::string_view input = {});

} // namespace notch
