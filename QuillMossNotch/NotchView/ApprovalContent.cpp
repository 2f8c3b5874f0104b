// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ApprovalContent.h"

#include "Foundation/Json.h"
#include "Foundation/Utf8.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "Interaction/ApprovalPresentation.h"
#include "Style/VisibleText.h"
#include "Unicode/Scalars.h"

#include <cmath>

namespace notch {
namespace {

constexpr std::size_t shownSessionScalars = 12;
constexpr int urgentSeconds = 10;
constexpr std::size_t longestTitle = 203; // A name of 200 characters, and what is before it.
// A card of the host's window waits without end: its deadline is years away.
constexpr Seconds longestDeadline{24 * 60 * 60};

std::string_view editionName(std::string_view source)
{
    return displayName(parseQuillMossProfile(source).value_or(QuillMossProfile::quillmoss));
}

std::string shortSession(std::string_view sessionID)
{
    if (sessionID.empty())
        return "未提供会话";
    return visibleText(firstScalars(sessionID, shownSessionScalars), Lines::one);
}

std::string_view headerOfDetails(const ApprovalRequest& request, const Json& input)
{
    if (input.object()->empty())
        return "完整请求信息";
    return request.isNative() || request.toolName == "Bash" ? "完整命令" : "工具参数";
}

// What is said around a hook's request.
void describeHook(ApprovalContent& content, const ApprovalRequest& request)
{
    const auto directory = visibleText(request.cwd, Lines::one);
    content.originSymbol = Symbol::folder;
    content.origin = trimmed(request.cwd).empty() ? missingDirectory : directory;
    content.source =
        std::string(editionName(request.source)) + " · " + shortSession(request.sessionID);
    content.sourceToolTip =
        "会话：" + visibleText(request.sessionID, Lines::one) + "\n目录：" + directory;
    content.chip = "超时交回原窗口";
    content.negativeText = "拒绝";
    content.positiveText = "允许本次";
}

// What is said around a card of the host's own window.
void describeNative(ApprovalContent& content, const ApprovalRequest& request)
{
    content.banner = "原生安全确认 · 只点击当前这张卡，不更改权限策略";
    content.originSymbol = Symbol::macwindow;
    content.origin = "来自 QuillMoss 原窗口";
    content.source = "原窗口：" + visibleText(request.sessionID, Lines::one);
    content.sourceToolTip = content.source;
    content.chip = "点击前重新核验";
    content.negativeText = "取消删除";
    content.positiveText = "允许本次删除";
}

} // namespace

ApprovalContent::ApprovalContent(const ApprovalRequest& request)
    : isNative(request.isNative())
    , parameters(visibleText(request.toolInputJSON, Lines::many))
{
    const auto input = ApprovalPresentation::inputOf(request);
    const ApprovalPresentation presentation(request, input);
    wholeTitle = visibleText(presentation.title, Lines::one);
    title = cutInTheMiddle(wholeTitle, longestTitle);
    command = visibleText(presentation.primaryText, Lines::many);
    detailsHeader = headerOfDetails(request, input);
    if (presentation.description)
        description =
            std::string(descriptionLeadIn) + visibleText(*presentation.description, Lines::many);
    if (presentation.hasAdditionalParameters)
        detailsChip = "含附加参数";
    if (isNative)
        describeNative(*this, request);
    else
        describeHook(*this, request);
}

std::optional<TimeLine> TimeLine::of(const ApprovalRequest& request, Date now)
{
    const auto left = std::max(request.expiresAt - now, Seconds{0});
    if (left > longestDeadline)
        return std::nullopt;
    const double shown = std::ceil(left.count());
    return TimeLine{
        .seconds = std::to_string(static_cast<int>(shown)) + " 秒",
        .note = "时间用尽交回 QuillMoss 原流程，不自动允许",
        .urgent = shown <= urgentSeconds,
        .nextChange = Seconds{left.count() - (shown - 1)},
    };
}

ButtonContent detailsToggle(const NotchInteraction& interaction)
{
    return interaction.showAllParameters ? ButtonContent{Symbol::chevronUp, "返回命令视图"}
                                         : ButtonContent{Symbol::chevronDown, "查看完整参数"};
}

ButtonContent copyButton(
    const ApprovalRequest& request, const std::optional<std::string>& copiedRequestID)
{
    return copiedRequestID == request.id ? ButtonContent{Symbol::checkmark, "已复制"}
                                         : ButtonContent{Symbol::docOnDoc, "复制"};
}

} // namespace notch
