// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookEventPolicy.h"

#include "Foundation/Utf8.h"

#include <algorithm>
#include <array>

namespace notch {
namespace {

// Tools whose permission prompt is itself a question to the person; the host shows it better.
constexpr std::array<std::string_view, 6> questionTools{
    "askuserquestion",
    "ask_user_question",
    "askuserforstructuredinput",
    "ask_user_for_structured_input",
    "exitplanmode",
    "exit_plan_mode",
};

} // namespace

bool HookEventPolicy::acceptsApproval(std::string_view eventName, std::string_view toolName)
{
    if (eventName != "PermissionRequest")
        return false;
    return std::ranges::find(questionTools, lowercasedName(toolName)) == questionTools.end();
}

} // namespace notch
