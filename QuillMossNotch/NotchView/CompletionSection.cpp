// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/CompletionSection.h"

#include "NotchView/CompletionContent.h"
#include "NotchView/ReminderButton.h"
#include "Style/NotchStyle.h"
#include "Style/PlainLabel.h"
#include "Style/SymbolPicture.h"
#include "Style/TextLine.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace notch {
namespace {

constexpr int pictureSide = 28;

} // namespace

CompletionSection::CompletionSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , title_(new TextLine(style::font(19, QFont::DemiBold), style::text, this))
    , note_(plainLabel(style::font(12), style::white(0.6), this))
    , failure_(new TextLine(style::font(11), style::warning, this))
    , dismiss_(new ReminderButton(
          model, NotchActionStyle::Role::secondary,
          [&model](UUID token) { model.dismissCompletion(token); }, this))
    , open_(new ReminderButton(
          model, NotchActionStyle::Role::primary,
          [&model](UUID token) { model.activateCompletion(token); }, this))
{
    setObjectName(QStringLiteral("completion-reminder"));
    title_->setObjectName(QStringLiteral("completion-title"));
    failure_->setObjectName(QStringLiteral("completion-activation-failed"));
    dismiss_->setObjectName(QStringLiteral("completion-dismiss"));
    open_->setObjectName(QStringLiteral("completion-open"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(buildTitle());
    column->addWidget(note_);
    column->addWidget(failure_);
    column->addSpacing(2);
    column->addLayout(buildButtons());
    note_->setText(toQString(completionNote));
    failure_->setContent(Symbol::none, completionFailure);
}

QLayout* CompletionSection::buildTitle()
{
    auto* const picture = new SymbolPicture(pictureSide, this);
    picture->setSymbol(Symbol::bellBadgeFill, style::accent);
    title_->setContent(Symbol::none, completionTitle);
    auto* const row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(picture);
    row->addWidget(title_, 1);
    return row;
}

QLayout* CompletionSection::buildButtons()
{
    dismiss_->setContent(Symbol::none, completionDismissText);
    open_->setContent(Symbol::arrowUpForward, completionOpenText);
    setPlainToolTip(*open_, completionOpenToolTip);
    auto* const row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(dismiss_, 1);
    row->addWidget(open_, 1);
    return row;
}

void CompletionSection::present(const AppModelState& state)
{
    token_ = state.completionState.current->token;
    failure_->setVisible(state.completionActivationFailed);
    dismiss_->setReminder(token_, state.completionSeen);
    open_->setReminder(token_, state.completionActionReady);
}

ShownDecision CompletionSection::decision() const
{
    return {.requestID = {},
        .buttons = {dismiss_->onDesktop(), open_->onDesktop()},
        .reminder = token_};
}

} // namespace notch
