// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/HookQuestions.h"

#include <utility>

namespace notch {

ConfirmQuestion installQuestion(QuillMossProfile profile, std::string preview)
{
    return {
        .title = "安装 / 更新 " + std::string(displayName(profile)) + " 接入？",
        .text = "仅真实审批，不拦正常命令：只保留 PermissionRequest，移除本应用旧版逐命令拦截。"
                "不会自动允许。原生安全弹窗未必发送此事件；安装后请重新启动 QuillMoss。",
        .preview = std::move(preview),
        .confirm = "备份并安装",
    };
}

ConfirmQuestion removeQuestion(QuillMossProfile profile)
{
    return {
        .title = "移除 " + std::string(displayName(profile)) + " 的刘海审批 Hook？",
        .text = "只移除本应用的 Hook；其他设置保留。完成后请重新启动 QuillMoss。",
        .preview = {},
        .confirm = "移除",
    };
}

ConfirmQuestion turnEndQuestion(TurnEndChange change)
{
    if (change == TurnEndChange::removal) {
        return {
            .title = "移除本轮结束提醒接入？",
            .text = "只移除本应用的结束通知和临时探针，不移除审批 Hook，也不影响 QuillMoss 的任务。"
                    "会先创建私有备份。",
            .preview = {},
            .confirm = "移除",
        };
    }
    return {
        .title = "接入 QuillMoss 本轮结束提醒？",
        .text = "只添加 UserPromptSubmit / FinalStop 通知 Hook，保留已有审批与其他配置。"
                "先创建私有备份；替换本应用旧探针。接入后开启提醒，需等新的一轮开始。",
        .preview = {},
        .confirm = "接入并开启",
    };
}

} // namespace notch
