// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsFooter.h"

#include "SettingsView/SettingsQuitStyle.h"
#include "SettingsView/SettingsSection.h"
#include "SettingsView/SettingsStyle.h"
#include "SettingsView/SymbolLabel.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace notch {
namespace {

class QuitButton final : public QAbstractButton {
public:
    QuitButton()
    {
        setObjectName(QStringLiteral("settings-quit"));
        setFont(settings::font(13, QFont::DemiBold));
        setText(QStringLiteral("退出 QuillMoss Notch"));
        setShortcut(QKeySequence::Quit);
        setToolTip(shortcut().toString(QKeySequence::NativeText));
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
    }

    QSize sizeHint() const override { return SettingsQuitStyle().sizeFor(text(), font()); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        SettingsQuitStyle{.hovered = underMouse(), .pressed = isDown(), .focused = hasFocus()}
            .paint(painter, rect(), text(), palette());
    }
};

} // namespace

SettingsFooter::SettingsFooter(AppModel& model)
{
    auto* const quit = new QuitButton;
    connect(quit, &QAbstractButton::clicked, this, [&model] {
        if (model.onQuitRequested)
            model.onQuitRequested();
    });
    auto* const words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(plainLabel("退出不会关闭 QuillMoss", settings::font(12)));
    words->addWidget(
        settingsNote("仅退出刘海助手，不移除 Hook，也不自动处理任何审批；有待审请求时会先确认"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(14, 10, 24, 12);
    row->setSpacing(10);
    row->addWidget(quit, 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
}

} // namespace notch
