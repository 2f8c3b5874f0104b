// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/DecisionSection.h"

#include "NotchView/DecisionButton.h"
#include "Style/NotchStyle.h"
#include "Style/TextLine.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace notch {

DecisionSection::DecisionSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , time_(new TextLine(style::font(11, QFont::Medium), style::white(0.5), this))
    , timeNote_(new TextLine(style::font(11), style::white(0.5), this))
    , negative_(new DecisionButton(model, Decision::deny, NotchActionStyle::Role::secondary, this))
    , positive_(new DecisionButton(model, Decision::allow, NotchActionStyle::Role::primary, this))
    , onlyThis_(new TextLine(style::font(11), style::white(0.45), this))
    , toHost_(new ActionButton(NotchActionStyle::Role::plain, this))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 2, 0, 0);
    column->setSpacing(8);
    column->addLayout(buildTime());
    column->addLayout(buildButtons());
    column->addLayout(buildFooter());
}

QLayout* DecisionSection::buildTime()
{
    time_->setObjectName(QStringLiteral("time-left"));
    time_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    timeNote_->setObjectName(QStringLiteral("time-note"));
    auto* const row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(time_);
    row->addWidget(timeNote_, 1);
    return row;
}

QLayout* DecisionSection::buildButtons()
{
    negative_->setObjectName(QStringLiteral("decision-deny"));
    positive_->setObjectName(QStringLiteral("decision-allow"));
    positive_->setFocusPolicy(Qt::NoFocus); // No key that was meant for something else reaches it.
    auto* const row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(negative_, 1);
    row->addWidget(positive_, 1);
    return row;
}

QLayout* DecisionSection::buildFooter()
{
    onlyThis_->setContent(Symbol::lock, onlyThisText);
    toHost_->setObjectName(QStringLiteral("to-host"));
    toHost_->setContent(Symbol::none, toHostText);
    connect(toHost_, &QAbstractButton::clicked, this, [this] { model_.openHost(source_); });
    auto* const row = new QHBoxLayout;
    row->addWidget(onlyThis_, 1);
    row->addWidget(toHost_);
    return row;
}

void DecisionSection::setContent(const ApprovalContent& content)
{
    negative_->setContent(Symbol::xmark, content.negativeText);
    positive_->setContent(Symbol::checkmark, content.positiveText);
}

void DecisionSection::present(const ApprovalRequest& request, bool armed)
{
    source_ = request.source;
    negative_->setRequest(request.id, armed);
    positive_->setRequest(request.id, armed);
}

void DecisionSection::showTime(const std::optional<TimeLine>& line)
{
    time_->setVisible(line.has_value());
    timeNote_->setVisible(line.has_value());
    if (!line)
        return;
    const auto colour = line->urgent ? style::warning : style::white(0.5);
    time_->setColour(colour);
    time_->setContent(Symbol::clock, line->seconds);
    timeNote_->setColour(colour);
    timeNote_->setContent(Symbol::none, line->note);
}

std::array<Rect, 2> DecisionSection::buttons() const
{
    return {negative_->onDesktop(), positive_->onDesktop()};
}

} // namespace notch
