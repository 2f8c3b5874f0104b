// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/ConfigurationSection.h"

#include "SettingsView/SettingsStyle.h"
#include "SettingsView/StatusContent.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/NotchStyle.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWheelEvent>

namespace notch {
namespace {

constexpr StatusLine interceptionWarning{Symbol::exclamationmarkTriangleFill, Tone::caution,
    "发现旧版逐命令拦截，更新接入将移除它，仅保留真实权限请求。"};

// The wheel scrolls the settings; it must not choose another edition on its way.
class EditionPicker final : public QComboBox {
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

// One line that can be scrolled, selected and copied, whatever its length.
QLineEdit* pathLine()
{
    auto* const line = new QLineEdit;
    line->setObjectName(QStringLiteral("settings-path"));
    line->setReadOnly(true);
    line->setFrame(false);
    line->setTextMargins(-2, 0, 0, 0); // Its letters begin where those of the other lines do.
    line->setFont(settings::font(10));
    line->setAccessibleName(QStringLiteral("settings.json"));
    QPalette colours;
    colours.setColor(QPalette::Base, Qt::transparent);
    line->setPalette(colours);
    return line;
}

} // namespace

ConfigurationSection::ConfigurationSection(AppModel& given, HookFlow& flow)
    : SettingsSection(given, configurationContent())
    , flow_(flow)
    , picker_(new EditionPicker)
    , path_(pathLine())
    , status_(new SymbolLabel(settings::font(13, QFont::Medium), Tone::plain, settings::scaled(16)))
    , detail_(new SymbolLabel(settings::font(11), Tone::secondary))
    , warning_(new SymbolLabel(settings::font(12), Tone::plain, settings::scaled(15)))
    , install_(settingsButton("settings-install", "更新接入…"))
{
    addPicker();
    addStatus();
    addHint();
    addActions();
    addLastRows();
}

void ConfigurationSection::addPicker()
{
    picker_->setObjectName(QStringLiteral("settings-edition"));
    picker_->setFont(settings::font(13));
    for (const auto profile : allQuillMossProfiles)
        picker_->addItem(toQString(displayName(profile)));
    connect(picker_, &QComboBox::activated, this,
        [this](int index) { flow_.choose(allQuillMossProfiles[static_cast<std::size_t>(index)]); });
    auto* const label = plainLabel("接入版本", settings::font(13));
    label->setWordWrap(false);
    label->setBuddy(picker_); // A screen reader says both.
    auto* const row = addRow();
    row->addWidget(label);
    row->addWidget(picker_);
    row->addStretch(1);
    add(settingsNote("仅读取所选版本的 settings.json；不会写入配置"));
    add(path_);
}

void ConfigurationSection::addStatus()
{
    status_->setObjectName(QStringLiteral("settings-status"));
    detail_->setObjectName(QStringLiteral("settings-detail"));
    detail_->makeSelectable();
    add(status_);
    add(detail_);
}

void ConfigurationSection::addHint()
{
    add(plainLabel("仅真实审批，不拦正常命令", settings::font(12, QFont::Medium)));
    add(settingsNote("仅处理 QuillMoss 发出的 PermissionRequest，在引擎真正请求权限时等待你手动"
                     "允许或拒绝。不逐条拦截 Bash，不自动允许，也不改变全局权限模式。"));
    warning_->setObjectName(QStringLiteral("settings-warning"));
    warning_->setContent(interceptionWarning);
    add(warning_);
}

void ConfigurationSection::addActions()
{
    auto* const refresh = settingsButton("settings-refresh", "刷新状态");
    auto* const remove = settingsButton("settings-remove", "移除接入…");
    auto* const open = settingsButton("settings-open", "打开 QuillMoss");
    refresh->setIcon(settings::icon(Symbol::arrowClockwise));
    refresh->setShortcut(QKeySequence::Refresh);
    connect(refresh, &QPushButton::clicked, this, [this] { flow_.refresh(); });
    connect(install_, &QPushButton::clicked, this, [this] { flow_.install(); });
    connect(remove, &QPushButton::clicked, this, [this] { flow_.remove(); });
    connect(open, &QPushButton::clicked, this, [this] { flow_.openHost(); });
    addButtons({refresh, install_, remove, open});
}

void ConfigurationSection::refresh()
{
    SettingsSection::refresh();
    const auto& state = flow_.state();
    const ConfigurationStatus status(state);
    const auto path = toQString(state.settingsURL);
    if (path_->text() != path)
        path_->setText(path);
    path_->setCursorPosition(path_->hasSelectedText() ? path_->cursorPosition() : 0);
    picker_->setCurrentIndex(static_cast<int>(state.profile));
    status_->setContent(status.line);
    detail_->setContent({Symbol::none, Tone::plain, state.configuration.detail});
    warning_->setVisible(status.warnsOfInterception);
    install_->setText(toQString(status.installText));
    install_->setEnabled(status.canInstall);
}

} // namespace notch
