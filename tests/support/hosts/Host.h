// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/RunningApplications/RunningApplications.h"
#include "support/ChildProcess.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <string>
#include <unistd.h>
#include <utility>

namespace notch {

// An agent's window, in another process on this test's desktop.
class Host {
public:
    explicit Host(const std::string& program)
        : process_(program)
    {
    }
    void show(const std::string& tree) { tell("show\n" + tree + "."); }
    // Also fails if a button was pressed that nobody has asked for.
    void tell(const std::string& command)
    {
        process_.write(command + '\n');
        EXPECT_EQ(process_.readLine(), "done\n") << command.substr(0, 80);
    }
    // Shows it in its window, while another one, of this process, has the keyboard.
    void showInBackground(const RunningApplications& applications, const std::string& tree)
    {
        const auto isActive = [&] {
            const auto running = applications.running();
            return !running.empty() && running.back().isActive;
        };
        show(tree);
        // A new window gets the keyboard, sooner or later.
        EXPECT_TRUE(!std::exchange(isNew_, false) || waitUntil(isActive));
        applications.activate(::getpid());
        EXPECT_TRUE(waitUntil([&] { return !isActive(); }));
    }
    std::string pressed() { return process_.readLine(); }
    void signal(int number) const { process_.kill(number); }

private:
    ChildProcess process_;
    bool isNew_ = true;
};

} // namespace notch
