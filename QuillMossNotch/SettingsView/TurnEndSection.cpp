// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/TurnEndSection.h"

#include "SettingsView/SettingsStyle.h"
#include "SettingsView/StatusContent.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/NotchStyle.h"

#include <QPushButton>

namespace notch {

TurnEndSection::TurnEndSection(AppModel& given, HookFlow& flow)
    : SettingsSection(given, turnEndContent())
    , flow_(flow)
    , status_(new SymbolLabel(settings::font(12), Tone::plain, settings::scaled(15)))
    , install_(settingsButton("settings-turn-end-install", "更新结束提醒接入…"))
    , remove_(settingsButton("settings-turn-end-remove", "移除结束提醒接入…"))
{
    status_->setObjectName(QStringLiteral("settings-turn-end-status"));
    connect(install_, &QPushButton::clicked, this,
        [this] { flow_.changeTurnEnd(TurnEndChange::install); });
    connect(remove_, &QPushButton::clicked, this,
        [this] { flow_.changeTurnEnd(TurnEndChange::removal); });
    add(status_);
    addButtons({install_, remove_});
    addLastRows();
}

void TurnEndSection::refresh()
{
    SettingsSection::refresh();
    const TurnEndStatus status(model().state(), flow_.state());
    status_->setContent(status.line);
    install_->setText(toQString(status.installText));
    install_->setEnabled(status.buttonsEnabled);
    remove_->setEnabled(status.buttonsEnabled);
}

} // namespace notch
