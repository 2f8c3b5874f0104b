// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/ResultRow.h"

#include "SettingsView/SettingsSection.h"
#include "SettingsView/SettingsStyle.h"
#include "SettingsView/StatusContent.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/AccessibleRole.h"
#include "Style/NotchStyle.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPushButton>

#include <utility>

namespace notch {

ResultRow::ResultRow(HookFlow& flow)
    : flow_(flow)
    , text_(new SymbolLabel(settings::font(11), Tone::plain, settings::scaled(15)))
    , backup_(settingsButton("settings-backup", "在 Finder 显示备份"))
{
    setAccessibleRole(*this, QAccessible::Notification); // Readers speak what is new in one.
    setObjectName(QStringLiteral("settings-result-row"));
    text_->setObjectName(QStringLiteral("settings-result"));
    text_->makeSelectable();
    connect(backup_, &QPushButton::clicked, this, [this] { flow_.showBackup(); });
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(text_, 1);
    row->addWidget(backup_, 0, Qt::AlignTop);
    setVisible(false);
}

bool ResultRow::refresh()
{
    const ResultStatus status(flow_.state());
    text_->setContent(status.line);
    backup_->setVisible(status.hasBackup);
    setAccessibleName(text_->text());
    const bool isNew = std::exchange(shown_, flow_.state().ended) != flow_.state().ended;
    const bool wasVisible = isVisible();
    setVisible(!status.line.text.empty());
    const bool isAnnounced = isVisible() && !wasVisible; // By the toolkit, as all that comes up.
    if (isNew && !isAnnounced) {
        QAccessibleEvent announced(this, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&announced);
    }
    return isNew;
}

} // namespace notch
