// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/ChildProcess.h"
#include "support/WaitUntil.h"
#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace notch {

// A test with a resident application on this process's private desktop, which nobody has touched.
class NotchOnDesktop : public testing::Test {
protected:
    static constexpr const char* allow = "允许本次";
    static constexpr const char* deny = "拒绝";

    void SetUp() override
    {
        if (std::getenv("NOTCH_NAMESPACE") != std::string("own"))
            GTEST_SKIP() << "no mount namespace: the real bridge directory must not be touched";
        // What the toolkit keeps until the process ends would count as leaks of each child.
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 0);
        startResident();
    }

    // Returns when it is on the screen and serves hooks.
    void startResident(std::vector<std::string> arguments = {})
    {
        resident_.reset();
        resident_ = std::make_unique<ChildProcess>(PROGRAM_PATH, std::move(arguments));
        ASSERT_TRUE(waitUntil([&] { return notch_.hasWindows(); })) << "no notch appeared";
    }
    ChildProcess& resident() { return *resident_; }

    // A hook of the host that waits for a decision.
    static std::unique_ptr<ChildProcess> ask()
    {
        auto hook = std::make_unique<ChildProcess>(
            PROGRAM_PATH, std::vector<std::string>{"--hook", "--source", "quillmoss"});
        hook->write(R"({"hook_event_name":"PermissionRequest","tool_name":"Bash",)"
                    R"("tool_input":{"command":"rm -rf ./old"},"session_id":"s","cwd":"/"})");
        hook->closeInput();
        return hook;
    }
    // An answer is the line that it printed.
    static void expectAnswer(ChildProcess& hook, const std::string& decision)
    {
        const auto ending = hook.finish();
        EXPECT_EQ(ending.status, 0);
        EXPECT_NE(ending.output.find("\"behavior\":\"" + decision + '"'), std::string::npos);
        EXPECT_TRUE(ending.output.ends_with("}\n"));
    }
    static void expectSilence(const ChildProcess::Ending& ending)
    {
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.output + ending.errors, "");
    }

    // Waits until it can be pressed and no longer moves. While the notch still opens, a click may
    // meet a part that is not drawn yet: see armed().
    AccessibleControl settled(const std::string& control)
    {
        std::optional<AccessibleControl> before;
        const auto found = notch_.waitFor(control, [&](const AccessibleControl& now) {
            return now.isEnabled && std::exchange(before, now) == now;
        });
        EXPECT_TRUE(found) << control;
        return found.value_or(AccessibleControl{});
    }
    // Waits likewise, and clicks it.
    void click(const std::string& button)
    {
        const auto control = settled(button);
        other_.clickAt(control.x, control.y);
    }
    // Waits until the decision buttons are armed; the notch has opened fully by then.
    AccessibleControl armed() { return settled(allow); }
    bool appears(const std::string& control) { return notch_.waitFor(control).has_value(); }
    bool disappears(const std::string& control)
    {
        return waitUntil([&] { return !notch_.showing(control); });
    }

    OtherProgram other_;
    AccessibleProgram notch_{"QuillMossNotch"};

private:
    std::unique_ptr<ChildProcess> resident_;
};

} // namespace notch
