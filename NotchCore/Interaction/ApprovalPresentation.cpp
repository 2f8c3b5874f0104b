// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/ApprovalPresentation.h"

#include "Unicode/Scalars.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace notch {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> toolTitles{{
    {"Read", "读取文件"},
    {"Write", "写入文件"},
    {"Edit", "修改文件"},
    {"WebFetch", "访问网页"},
}};

std::string toolTitle(const std::string& toolName)
{
    for (const auto& [tool, title] : toolTitles) {
        if (tool == toolName)
            return std::string(title);
    }
    return "使用 " + toolName;
}

std::optional<std::string> nonEmptyText(const Json& input, std::string_view key)
{
    const auto* text = input.string(key);
    return text && !text->empty() ? std::optional(*text) : std::nullopt;
}

bool hasKeysBeyondCommand(const Json& input)
{
    return std::ranges::any_of(*input.object(), [](const auto& member) {
        return member.first != "command" && member.first != "description";
    });
}

std::string projectName(std::string_view cwd)
{
    const auto path = trimmed(cwd);
    if (path.empty())
        return std::string(missingDirectory);
    const auto end = path.find_last_not_of('/');
    if (end == std::string_view::npos)
        return "/";
    const auto directory = path.substr(0, end + 1);
    return std::string(directory.substr(directory.find_last_of('/') + 1));
}

} // namespace

Json ApprovalPresentation::inputOf(const ApprovalRequest& request)
{
    constexpr std::size_t members = 1; // What is nested in them is not asked for, and may be much.
    auto parsed = Json::parseOutline(request.toolInputJSON, members);
    return parsed && parsed->object() ? *std::move(parsed) : Json(Json::Object{});
}

ApprovalPresentation::ApprovalPresentation(const ApprovalRequest& request)
    : ApprovalPresentation(request, inputOf(request))
{
}

ApprovalPresentation::ApprovalPresentation(const ApprovalRequest& request, const Json& input)
    : description(nonEmptyText(input, "description"))
    , project(projectName(request.cwd))
{
    const bool native = request.isNative();
    const auto command = nonEmptyText(input, "command");
    if (command && (native || request.toolName == "Bash")) {
        title = native ? "确认批量删除" : "执行终端命令";
        primaryText = *command;
        hasAdditionalParameters = hasKeysBeyondCommand(input);
    } else {
        title = toolTitle(request.toolName);
        primaryText = request.toolInputJSON;
    }
}

} // namespace notch
