// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"

#include "HookConfiguration/ApprovalHooks.h"
#include "HookConfiguration/Location.h"
#include "HookConfiguration/SettingsDocument.h"

namespace notch {
namespace {

void refuseInterception(HookInstaller::InterceptBash interceptBash)
{
    if (interceptBash == HookInstaller::InterceptBash::yes)
        throw HookInstaller::Failure("已停用逐命令拦截；仅支持 QuillMoss 真实权限请求。");
}

// Fails as an installation would on what the file holds now.
void requireUsableSettings(const FileSystem& files, std::string_view settingsURL)
{
    if (const auto location = Location::open(files, settingsURL, MissingDirectories::leave))
        validateSettings(location->read().data);
}

} // namespace

std::string HookInstaller::preview(std::string_view settingsURL, std::string_view executableURL,
    std::string_view source, InterceptBash interceptBash) const
{
    refuseInterception(interceptBash);
    const auto command = approvalCommand(executableURL, source);
    requireUsableSettings(files_, settingsURL);
    const Json added = Json::Object{{"hooks", approvalHookGroups(command)}};
    std::string text = "目标配置：";
    text.append(settingsURL).append("\n来源：").append(source);
    text += "\n安装前将创建仅当前用户可读的备份，保留其他设置和他人的 hooks。\n"
            "仅接入 PermissionRequest，正常命令不弹窗；移除本应用旧版 PreToolUse 逐命令拦截。"
            "原生安全弹窗未必发送该事件，不以拦截全部命令作为替代。"
            "\n以下仅显示本应用拟添加的 hook，不显示现有设置或密钥：\n";
    return text + settingsText(added);
}

std::string HookInstaller::install(std::string_view settingsURL, std::string_view executableURL,
    std::string_view source, InterceptBash interceptBash) const
{
    refuseInterception(interceptBash);
    const auto command = approvalCommand(executableURL, source);
    return installHooks(files_, settingsURL, approvalHooks(), approvalHookGroups(command));
}

std::string HookInstaller::uninstall(std::string_view settingsURL) const
{
    return uninstallHooks(
        files_, settingsURL, approvalHooks(), "配置文件不存在；没有可卸载的 hook。");
}

} // namespace notch
