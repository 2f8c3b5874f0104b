// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/QuestionSection.h"

#include "NotchView/QuestionContent.h"
#include "NotchView/ReminderButton.h"
#include "Style/NotchStyle.h"
#include "Style/PlainLabel.h"
#include "Style/TextBlock.h"
#include "Style/TextLine.h"

#include <QVBoxLayout>

namespace notch {
namespace {

using HandoffStatus = QuestionReminderState::HandoffStatus;

constexpr int maxQuestionHeight = 112;

} // namespace

QuestionSection::QuestionSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , title_(new TextLine(style::font(18, QFont::DemiBold), style::text, this))
    , question_(new TextBlock(
          style::font(14), style::white(0.95), maxQuestionHeight, TextBlock::Ground::absent, this))
    , page_(new TextLine(style::font(11), style::white(0.6), this))
    , note_(plainLabel(style::font(11), style::white(0.5), this))
    , failure_(new TextLine(style::font(11), style::warning, this))
    , goAnswer_(new ReminderButton(
          model, NotchActionStyle::Role::primary,
          [&model](UUID token) { model.handoffQuestion({token}); }, this))
{
    setObjectName(QStringLiteral("question-reminder"));
    question_->setObjectName(QStringLiteral("question-title"));
    page_->setObjectName(QStringLiteral("question-page"));
    failure_->setObjectName(QStringLiteral("question-activation-failed"));
    goAnswer_->setObjectName(QStringLiteral("question-go-answer"));
    title_->setContent(Symbol::none, questionTitle);
    note_->setText(toQString(questionNote));
    failure_->setContent(Symbol::none, questionFailure);
    goAnswer_->setContent(Symbol::arrowUpForward, goAnswerText);
    setPlainToolTip(*goAnswer_, goAnswerToolTip);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    for (QWidget* const part :
        std::initializer_list<QWidget*>{title_, question_, page_, note_, failure_, goAnswer_})
        column->addWidget(part);
}

void QuestionSection::present(const AppModelState& state)
{
    const auto& question = state.questionState;
    const QuestionContent content(*question.visible());
    question_->setContent(content.question);
    page_->setContent(Symbol::none, content.page);
    failure_->setVisible(question.handoffStatus() == HandoffStatus::activationFailed);
    token_ = question.token()->value;
    goAnswer_->setReminder(token_, state.questionActionReady);
}

ShownDecision QuestionSection::decision() const
{
    const auto place = goAnswer_->onDesktop();
    return {.requestID = {}, .buttons = {place, place}, .reminder = token_};
}

} // namespace notch
