// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/NativeSection.h"

#include "SettingsView/SettingsStyle.h"
#include "SettingsView/StatusContent.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/NotchStyle.h"

#include <QPushButton>

namespace notch {

NativeSection::NativeSection(AppModel& given)
    : SettingsSection(given, nativeContent())
    , status_(new SymbolLabel(settings::font(12), Tone::plain, settings::scaled(15)))
    , ask_(settingsButton("settings-access", "授权辅助功能…"))
{
    status_->setObjectName(QStringLiteral("settings-access-status"));
    setPlainToolTip(*ask_, "请求系统辅助功能权限，并打开对应系统设置；授权不等于允许任何删除");
    auto* const check = settingsButton("settings-access-check", "刷新检测");
    connect(ask_, &QPushButton::clicked, this,
        [this] { model().requestNativeAccess(AppModel::NativeAccess::ask); });
    connect(check, &QPushButton::clicked, this, [this] { model().refreshNativeMonitoring(); });
    add(status_);
    addButtons({ask_, check});
    addLastRows();
}

void NativeSection::refresh()
{
    SettingsSection::refresh();
    const AccessStatus status(model().state());
    status_->setContent(status.line);
    ask_->setVisible(status.canAsk);
}

} // namespace notch
