// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/IdleSection.h"

#include "Style/ActionButton.h"
#include "Style/NotchStyle.h"
#include "Style/PlainLabel.h"
#include "Style/TextLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace notch {
namespace {

void showLine(TextLine& line, const std::optional<std::string>& text)
{
    line.setVisible(text.has_value());
    if (text)
        line.setContent(Symbol::none, *text);
}

} // namespace

IdleSection::IdleSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , title_(new TextLine(style::font(14, QFont::Medium), style::text, this))
    , note_(plainLabel(style::font(11), style::white(0.5), this))
    , status_(new TextLine(style::font(10), style::white(0.7), this))
    , completion_(new TextLine(style::font(10), style::white(0.7), this))
    , native_(new TextLine(style::font(10), style::white(0.7), this))
    , main_(new ActionButton(NotchActionStyle::Role::primary, this))
    , demo_(new ActionButton(NotchActionStyle::Role::plain, this))
{
    title_->setObjectName(QStringLiteral("idle-title"));
    note_->setObjectName(QStringLiteral("idle-note"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 2, 0, 0);
    column->setSpacing(8);
    column->addWidget(title_);
    column->addWidget(note_);
    column->addLayout(buildStatus());
    column->addSpacing(4);
    column->addLayout(buildButtons());
}

QLayout* IdleSection::buildStatus()
{
    status_->setObjectName(QStringLiteral("idle-status"));
    completion_->setObjectName(QStringLiteral("idle-completion"));
    native_->setObjectName(QStringLiteral("idle-native"));
    auto* const column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(status_);
    column->addWidget(completion_);
    column->addWidget(native_);
    return column;
}

QLayout* IdleSection::buildButtons()
{
    main_->setObjectName(QStringLiteral("idle-main"));
    demo_->setObjectName(QStringLiteral("idle-demo"));
    demo_->setContent(Symbol::none, tryItOutText);
    connect(main_, &QAbstractButton::clicked, this, [this] { actionClicked(); });
    connect(demo_, &QAbstractButton::clicked, this, [this] { model_.showDemo(Demo::hook); });
    auto* const row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(main_);
    row->addWidget(demo_);
    row->addStretch(1);
    return row;
}

void IdleSection::present(const IdleContent& content)
{
    action_ = content.action;
    title_->setContent(Symbol::none, content.title);
    note_->setText(toQString(content.note));
    showLine(*status_, content.statusLine);
    showLine(*completion_, content.completionLine);
    showLine(*native_, content.nativeLine);
    main_->setContent(Symbol::none, content.actionText);
}

void IdleSection::actionClicked()
{
    switch (action_) {
    case IdleContent::Action::grantAccess:
        model_.requestNativeAccess(AppModel::NativeAccess::ask);
        return;
    case IdleContent::Action::openHost:
        model_.openHost(std::nullopt);
        return;
    case IdleContent::Action::showSettings:
        if (model_.showSettings)
            model_.showSettings();
        return;
    }
}

} // namespace notch
