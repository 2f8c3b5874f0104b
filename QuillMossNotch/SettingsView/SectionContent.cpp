// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SectionContent.h"

#include <array>

namespace notch {
namespace {

constexpr std::array interactionRows{
    SectionRow{Preference::hoverToExpand, "悬停展开刘海"},
    SectionRow{Preference::autoCollapse, "鼠标离开后自动收起"},
    SectionRow{{}, "仅影响刘海展示，不会更改 QuillMoss 配置或自动处理审批。"},
};

constexpr std::array nativeRows{
    SectionRow{Preference::nativeApprovalsEnabled, "在刘海显示真实的批量删除确认卡"},
    SectionRow{{},
        "仅当后台 QuillMoss 的原始确认卡确实存在时才显示；不拦正常命令。你在刘海明确点击后，"
        "才通过辅助功能 AXPress 按下原卡对应的“允许本次删除”或“取消删除”，绝不自动允许。"},
    SectionRow{Preference::questionRemindersEnabled, "后台等待回答时，在刘海提醒"},
    SectionRow{{},
        "只显示已确认的题目与页码，点“去回答”仅切回 QuillMoss。不会代选、填写、翻页、跳过或"
        "提交；同一提问收起后不反复弹出。当前支持已验证的编号选项卡形状，其他表单可能无法识别。"},
    SectionRow{{},
        "仅覆盖批量删除安全卡（bulk-delete-threshold）。无法完整读取命令、存在歧义、请求已变化，"
        "或窗口最小化 / 会话未加载时，不代点，请回 QuillMoss 确认。其他原生安全确认暂不覆盖。"},
    SectionRow{{}, "这是原生界面代理，不走 Hook，也不需要开启 PreToolUse。下方 Hook 接入独立工作，"
                   "且不需要辅助功能权限。"},
};

constexpr std::array turnEndRows{
    SectionRow{Preference::completionRemindersEnabled, "后台本轮结束时，在刘海提醒"},
    SectionRow{{},
        "仅 QuillMoss。配对接入后的新一轮开始与正常结束；失败、取消、不明状态和前台结束不弹"
        "成功提示。不补报旧任务，不代表全部后台任务或产物已成功完成。"},
};

constexpr std::array turnEndLastRows{
    SectionRow{{},
        "这项检测不需要辅助功能权限；不记录聊天正文、不等待你点击、不改变审批或要求模型继续。"
        "开关只控制监听，移除配置请用独立按钮。检测不到新事件时，保存工作后自行重开 QuillMoss。"},
};

constexpr std::array configurationRows{
    SectionRow{{},
        "这里只检查配置是否安装，不代表 QuillMoss 已连接。是否收到 Hook，请查看主面板的实际"
        "事件状态。"},
};

constexpr std::array configurationLastRows{
    SectionRow{{},
        "仅在你确认安装或移除后写入：先备份，保留其他设置。请固定本应用位置；移动后需更新接入。"
        "操作后请保存工作并退出、重开 QuillMoss。两款版本需分别安装。"},
    SectionRow{{},
        "原生安全、沙箱或 MCP App 弹窗未必触发 PermissionRequest，仍可能需要回到 QuillMoss "
        "确认。"},
};

} // namespace

const SectionContent& interactionContent()
{
    static constexpr SectionContent content{
        Symbol::cursorarrowMotionlines, "交互", interactionRows, {}};
    return content;
}

const SectionContent& nativeContent()
{
    static constexpr SectionContent content{
        Symbol::handRaised, "原生审批与提问提醒", nativeRows, {}};
    return content;
}

const SectionContent& turnEndContent()
{
    static constexpr SectionContent content{
        Symbol::bellBadge, "本轮结束提醒（独立 Hook）", turnEndRows, turnEndLastRows};
    return content;
}

const SectionContent& configurationContent()
{
    static constexpr SectionContent content{
        Symbol::link, "接入（PermissionRequest Hook）", configurationRows, configurationLastRows};
    return content;
}

} // namespace notch
