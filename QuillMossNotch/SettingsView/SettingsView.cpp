// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsView.h"

#include "SettingsView/ConfigurationSection.h"
#include "SettingsView/NativeSection.h"
#include "SettingsView/ResultRow.h"
#include "SettingsView/SettingsSection.h"
#include "SettingsView/SettingsStyle.h"
#include "SettingsView/SymbolLabel.h"
#include "SettingsView/TurnEndSection.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace notch {
namespace {

SymbolLabel* shield()
{
    const int side = settings::scaled(28);
    auto* const label = new SymbolLabel(settings::font(21), Tone::plain, side);
    label->setContent({Symbol::checkmarkShieldFill, Tone::good, {}});
    label->setFixedSize(side, side);
    return label;
}

} // namespace

SettingsView::SettingsView(AppModel& model, HookFlow& flow)
    : model_(model)
    , sections_{new SettingsSection(model, interactionContent()), new NativeSection(model),
          new TurnEndSection(model, flow), new ConfigurationSection(model, flow)}
    , result_(new ResultRow(flow))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(settings::sideMargin, 22, settings::sideMargin, 18);
    column->setSpacing(14);
    column->addLayout(buildHeader());
    for (auto* const section : sections_)
        column->addWidget(section);
    column->addWidget(result_);
    column->addStretch(1);
    refresh();
}

QLayout* SettingsView::buildHeader()
{
    auto* const demo = settingsButton("settings-demo", "演示刘海");
    connect(demo, &QPushButton::clicked, this, [this] { model_.showDemo(Demo::hook); });
    auto* const titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addWidget(plainLabel("把审批带到刘海", settings::font(21, QFont::DemiBold)));
    titles->addWidget(
        plainLabel("本地处理 · 手动确认 · 不自动允许", settings::font(12), Tone::secondary));
    auto* const row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(shield());
    row->addLayout(titles, 1);
    row->addWidget(demo);
    return row;
}

QWidget* SettingsView::refresh()
{
    for (auto* const section : sections_)
        section->refresh();
    return result_->refresh() ? result_ : nullptr;
}

} // namespace notch
