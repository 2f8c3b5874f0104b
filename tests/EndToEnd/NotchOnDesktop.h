// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/ChildProcess.h"
#include "support/WaitUntil.h"
#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <gmock/gmock.h>

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
    static constexpr const char* openNotch = "展开 QuillMoss 刘海";
    static constexpr const char* closeNotch = "收起 QuillMoss 刘海";

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
        ASSERT_TRUE(
            waitUntil([&] { return notch_.showing(openNotch) || notch_.showing(closeNotch); }));
    }

    // A hook of the host that waits for a decision on this tool with this input.
    static std::unique_ptr<ChildProcess> ask(
        const std::string& tool = R"("tool_name":"Bash","tool_input":{"command":"rm -rf ./old"})")
    {
        auto hook = std::make_unique<ChildProcess>(
            PROGRAM_PATH, std::vector<std::string>{"--hook", "--source", "quillmoss"});
        hook->write(R"({"hook_event_name":"PermissionRequest",)" + tool
                    + R"(,"session_id":"s","cwd":"/"})");
        hook->closeInput();
        return hook;
    }
    static void expectAnswer(ChildProcess& hook, const std::string& decision)
    {
        const auto ending = hook.finish();
        EXPECT_EQ(ending.status, 0);
        EXPECT_THAT(ending.output, testing::HasSubstr("\"behavior\":\"" + decision + '"'));
    }
    static void expectSilence(const ChildProcess::Ending& ending)
    {
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.output + ending.errors, "");
    }

    // Waits until it can be pressed and no longer moves, for longer than a step of the animation or
    // a layout takes. While the notch still opens, a click may meet a part that is not drawn yet:
    // see armed().
    AccessibleControl settled(const std::string& control)
    {
        std::optional<AccessibleControl> before;
        int still = 0;
        const auto found = notch_.waitFor(control, [&](const AccessibleControl& now) {
            still = std::exchange(before, now) == now ? still + 1 : 0;
            return now.isEnabled && still >= 10;
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
    std::unique_ptr<ChildProcess> resident_;
};

} // namespace notch
