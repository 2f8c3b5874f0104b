// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

#include "support/WaitUntil.h"

namespace notch {

std::string& NotchOnDesktop::reasonToSkip()
{
    static std::string reason;
    return reason;
}

void NotchOnDesktop::SetUp()
{
    if (!reasonToSkip().empty())
        GTEST_SKIP() << reasonToSkip();
    other_ = std::make_unique<OtherProgram>();
    notch_ = std::make_unique<AccessibleProgram>("QuillMossNotch");
    startResident();
}

void NotchOnDesktop::startResident(std::vector<std::string> arguments)
{
    resident_.reset();
    resident_ = std::make_unique<ChildProcess>(PROGRAM_PATH, std::move(arguments));
    ASSERT_TRUE(waitUntil([&] { return !notch_->controls().empty(); })) << "no notch appeared";
}

std::unique_ptr<ChildProcess> NotchOnDesktop::ask(const std::string& command)
{
    auto hook = std::make_unique<ChildProcess>(
        PROGRAM_PATH, std::vector<std::string>{"--hook", "--source", "quillmoss"});
    hook->write(
        R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"command":")"
        + command + R"("},"session_id":"s","cwd":"/"})");
    hook->closeInput();
    return hook;
}

std::optional<AccessibleControl> NotchOnDesktop::settled(const std::string& control)
{
    std::optional<AccessibleControl> before;
    return notch_->waitFor(control, [&](const AccessibleControl& found) {
        const bool still = before == found;
        before = found;
        return still && found.isEnabled;
    });
}

void NotchOnDesktop::click(const std::string& button)
{
    const auto control = settled(button);
    ASSERT_TRUE(control) << button;
    other_->clickAt(control->x, control->y);
}

AccessibleControl NotchOnDesktop::armed()
{
    const auto button = settled(allow);
    EXPECT_TRUE(button) << "the buttons were never armed";
    return button.value_or(AccessibleControl{});
}

bool NotchOnDesktop::appears(const std::string& control)
{
    return notch_->waitFor(control).has_value();
}

bool NotchOnDesktop::disappears(const std::string& control)
{
    return waitUntil([&] { return !notch_->showing(control); });
}

bool NotchOnDesktop::isAnswer(const ChildProcess::Ending& ending, const std::string& decision)
{
    return ending.status == 0 && ending.output.ends_with("}\n")
        && ending.output.find("\"behavior\":\"" + decision + '"') != std::string::npos;
}

bool NotchOnDesktop::isWithoutAnswer(const ChildProcess::Ending& ending)
{
    return ending.status == 0 && ending.output.empty() && ending.errors.empty();
}

} // namespace notch
