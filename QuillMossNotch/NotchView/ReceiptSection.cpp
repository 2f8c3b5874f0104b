// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ReceiptSection.h"

#include "NotchView/ReceiptContent.h"
#include "Style/ActionButton.h"
#include "Style/NotchStyle.h"
#include "Style/SymbolPicture.h"
#include "Style/TextLine.h"

#include <QVBoxLayout>

namespace notch {
namespace {

constexpr int pictureSide = 36;

QColor colourOf(ReceiptContent::Tint tint)
{
    switch (tint) {
    case ReceiptContent::Tint::accent:
        return style::accent;
    case ReceiptContent::Tint::warning:
        return style::warning;
    case ReceiptContent::Tint::muted:
        break;
    }
    return style::white(0.6);
}

} // namespace

ReceiptSection::ReceiptSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , picture_(new SymbolPicture(pictureSide, this))
    , title_(new TextLine(style::font(18, QFont::DemiBold), style::text, this))
    , note_(new TextLine(style::font(11), style::white(0.5), this))
    , next_(new ActionButton(NotchActionStyle::Role::plain, this))
{
    title_->setObjectName(QStringLiteral("receipt-title"));
    note_->setObjectName(QStringLiteral("receipt-note"));
    next_->setObjectName(QStringLiteral("receipt-next"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 8, 0, 6);
    column->setSpacing(6);
    column->addWidget(picture_, 0, Qt::AlignHCenter);
    column->addSpacing(4);
    column->addWidget(title_, 0, Qt::AlignHCenter);
    column->addWidget(note_, 0, Qt::AlignHCenter);
    column->addWidget(next_, 0, Qt::AlignHCenter);
    connect(next_, &QAbstractButton::clicked, this, [&model] { model.dismissFeedback(); });
}

void ReceiptSection::present(const NotchInteraction& interaction)
{
    const ReceiptContent content(*interaction.feedback(), interaction.requests().size());
    picture_->setSymbol(content.symbol, colourOf(content.tint));
    title_->setContent(Symbol::none, content.title);
    note_->setContent(Symbol::none, content.note);
    next_->setVisible(content.next.has_value());
    if (content.next)
        next_->setContent(Symbol::none, *content.next);
}

} // namespace notch
