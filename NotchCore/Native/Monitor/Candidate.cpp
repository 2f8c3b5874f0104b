// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/Candidate.h"

#include "Foundation/Json.h"
#include "Foundation/UUID.h"

#include <tuple>

namespace notch {
namespace {

constexpr Seconds tenYears{315'360'000}; // A card does not time out in the notch.

std::string toolInput(const NativeApprovalContext& context, const std::string& windowTitle)
{
    return Json(Json::Object{
                    {"description", context.title + '\n' + context.risk},
                    {"command", context.command},
                    {"原生允许按钮", context.allowLabel},
                    {"原生拒绝按钮", context.denyLabel},
                    {"窗口", windowTitle},
                    {"接入方式", "辅助功能：仅点击这个原生确认卡，不是工具 Hook"},
                })
        .pretty();
}

std::string hashes(const AXElements& elements)
{
    std::string joined;
    for (const auto& element : elements)
        joined += (joined.empty() ? "" : ",") + std::to_string(element.hash());
    return joined;
}

// Names the elements and the words of a card: another process, another element or another word
// gives another text.
std::string identityOf(const Candidate& card)
{
    std::string text;
    const auto add = [&text](std::string_view part) { (text += part) += '|'; };
    add(std::to_string(card.pid));
    for (const auto* element : {&card.window, &card.container, &card.allow, &card.deny})
        add(std::to_string(element->hash()));
    add(rawValue(card.layout));
    add(hashes(card.contextElements));
    add(card.context.command);
    return text;
}

} // namespace

bool Candidate::isSameCard(const Candidate& other) const
{
    const auto fields = [](const Candidate& card) {
        return std::tie(card.fingerprint, card.pid, card.window, card.container, card.allow,
            card.deny, card.layout, card.contextElements, card.context);
    };
    return fields(*this) == fields(other);
}

void describeCard(Candidate& card, const std::string& windowTitle, Date now, const Sha256& sha256)
{
    auto input = toolInput(card.context, windowTitle);
    card.fingerprint = sha256(identityOf(card) + input);
    card.request = {
        .id = UUID::random().text(),
        .sessionID = windowTitle,
        .toolName = "原生安全确认",
        .toolInputJSON = std::move(input),
        .cwd = "",
        .eventName = std::string(nativeApprovalEventName),
        .expiresAt = now + tenYears,
        .source = "quillmoss",
    };
}

} // namespace notch
