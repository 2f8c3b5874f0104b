// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/SettingsHookConfiguration.h"

#include "Foundation/Json.h"
#include "HookConfiguration/AnchoredRead.h"
#include "HookConfiguration/ApprovalHooks.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/SettingsDocument.h"

#include <algorithm>

namespace notch {
namespace {

using State = SettingsHookConfiguration::State;
using InspectionError = HookInstaller::Failure; // Its message ends in the detail of `invalid`.

constexpr ReadWording inspectionWording{
    .noRoot = "无法读取配置目录。",
    .badDirectory =
        [](std::string_view, int) {
            return std::string("无法安全读取配置目录；请检查权限或符号链接。");
        },
    .badFile = "无法安全读取 settings.json；请检查权限或符号链接。",
    .notPlain = "配置必须是当前用户拥有的普通文件，不能为硬链接或超过 4 MB。",
    .tooLarge = "配置超过 4 MB，未继续读取。",
    .readFailed = "读取 settings.json 失败。",
    .changed = "读取期间配置发生变化，请刷新重试。",
};

FileSnapshot readForInspection(const FileSystem& files, std::string_view settingsURL)
{
    auto pieces = pathPieces(settingsURL);
    if (pieces.empty())
        throw InspectionError(inspectionWording.notPlain);
    const auto name = std::move(pieces.back());
    pieces.pop_back();
    const auto directory =
        openDirectory(files, pieces, MissingDirectories::leave, inspectionWording);
    if (!directory)
        return {};
    return readConfiguration(files, directory->get(), name, inspectionWording);
}

// What was found of this system in the file. Several may hold at once.
struct Findings {
    bool changed = false;
    bool otherPath = false;
    bool exact = false;
    bool ownSeen = false;
    bool interceptBash = false;
};

struct Expected {
    std::string_view executableURL;
    QuillMossProfile profile;
};

bool isAsWritten(const std::string& event, const Json& group, const Json& hook)
{
    const auto isKnownKey = [](const auto& member) {
        return member.first == "hooks" || member.first == "matcher";
    };
    return hook == ownedHook(*hookCommand(hook), approvalHooks().timeout)
        && std::ranges::all_of(*group.object(), isKnownKey)
        && approvalHooks().isUnchangedGroup(event, *group.object());
}

void classify(Findings& findings, const std::string& event, const Json& group, const Json& hook,
    const Expected& expected)
{
    const auto* command = hookCommand(hook);
    const auto arguments = command ? HookInstaller::ownedArguments(
                               *command, HookInstaller::hookFlag, HookInstaller::ownerMarker)
                                   : std::nullopt;
    if (!arguments)
        return;
    const auto source = rawValue(expected.profile);
    const bool isInterception = event == "PreToolUse";
    findings.ownSeen = true;
    findings.interceptBash |= isInterception;
    if (!isAsWritten(event, group, hook) || (*arguments)[3] != source)
        findings.changed = true;
    else if (*command != HookInstaller::approvalCommand(expected.executableURL, source))
        findings.otherPath = true;
    else if (!isInterception)
        findings.exact = true;
}

Findings findOwnEntries(const Json::Object& hooks, const Expected& expected)
{
    Findings findings;
    for (const auto& [event, groups] : hooks)
        for (const auto& group : *groups.array())
            for (const auto& hook : hooksOf(group))
                classify(findings, event, group, hook, expected);
    return findings;
}

// The first row that holds gives the verdict.
SettingsHookConfiguration verdict(const Findings& findings)
{
    const auto result = [&](State state, const char* detail) {
        return SettingsHookConfiguration{state, detail, findings.interceptBash};
    };
    if (findings.changed)
        return result(State::review, "发现本应用命令，但来源、事件或选项有改动，无法确认有效接入。"
                                     "请检查配置；安装器不会覆盖手动修改的 Hook。");
    if (findings.otherPath)
        return result(State::reconnect,
            "Hook 指向其他应用路径，无法确认该路径是否仍有效。请固定本应用位置后更新接入。");
    if (findings.exact)
        return result(State::installed, "PermissionRequest 命令与当前应用路径、所选版本完全匹配。");
    if (findings.ownSeen)
        return result(
            State::review, "发现本应用 Hook，但缺少完整的 PermissionRequest 接入，请检查或更新。");
    return result(State::missing, "未发现本应用的完整 PermissionRequest 命令。");
}

SettingsHookConfiguration judge(const std::string& bytes, const Expected& expected)
{
    const auto document = Json::parse(bytes);
    if (!document)
        throw InspectionError("settings.json 不是合法 JSON。");
    const auto* root = document->object();
    if (!root)
        throw InspectionError("settings.json 必须是 JSON 对象。");
    const auto* hooks = document->member("hooks");
    if (!hooks)
        return {State::missing, "未发现本应用的 PermissionRequest 配置。", false};
    validateHooks(*root);
    return verdict(findOwnEntries(*hooks->object(), expected));
}

} // namespace

SettingsHookConfiguration SettingsHookConfiguration::inspect(std::string_view settingsURL,
    std::string_view executableURL, QuillMossProfile profile, const FileSystem& files)
{
    try {
        const auto snapshot = readForInspection(files, settingsURL);
        if (!snapshot.data)
            return {State::missing, "尚无 settings.json；确认安装后才会创建。", false};
        return judge(*snapshot.data, {executableURL, profile});
    } catch (const InspectionError& error) {
        return {State::invalid, error.message + " 仅读取，未修改配置。", std::nullopt};
    }
}

} // namespace notch
