// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/SwitcherSection.h"

#include "Style/IconButton.h"
#include "Style/NotchStyle.h"
#include "Style/TextLine.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QSignalBlocker>

namespace notch {
namespace {

constexpr QSize entrySize{26, 24};

constexpr auto listStyleSheet =
    "QListWidget { background: transparent; border: none; outline: none; }"
    "QListWidget::item { color: rgba(255,255,255,150); border-radius: 7px; }"
    "QListWidget::item:hover { background: rgba(255,255,255,25); }"
    "QListWidget::item:selected { background: rgba(255,255,255,45); color: white; }";

} // namespace

SwitcherSection::SwitcherSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , text_(new TextLine(style::font(11, QFont::Medium), style::white(0.7), this))
    , list_(new QListWidget(this))
    , previous_(new IconButton(Symbol::chevronLeft, this))
    , next_(new IconButton(Symbol::chevronRight, this))
{
    buildList();
    text_->setObjectName(QStringLiteral("switcher-text"));
    text_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    previous_->setObjectName(QStringLiteral("switcher-previous"));
    previous_->setContent(Symbol::chevronLeft, previousRequestLabel, switchToolTip);
    next_->setObjectName(QStringLiteral("switcher-next"));
    next_->setContent(Symbol::chevronRight, nextRequestLabel, switchToolTip);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(text_);
    row->addWidget(list_, 1);
    row->addWidget(previous_);
    row->addWidget(next_);
    connect(previous_, &QAbstractButton::clicked, this, [this] { model_.selectAdjacent(-1); });
    connect(next_, &QAbstractButton::clicked, this, [this] { model_.selectAdjacent(+1); });
}

void SwitcherSection::buildList()
{
    list_->setObjectName(QStringLiteral("switcher-list"));
    list_->setAccessibleName(toQString(requestListLabel));
    setPlainToolTip(*list_, switchToolTip);
    list_->setFlow(QListView::LeftToRight);
    list_->setFont(style::font(11, QFont::Medium));
    list_->setStyleSheet(QLatin1String(listStyleSheet));
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setFocusPolicy(Qt::TabFocus);
    list_->setContextMenuPolicy(Qt::NoContextMenu);
    list_->setFixedHeight(entrySize.height());
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) { rowChosen(row); });
}

void SwitcherSection::present(const NotchInteraction& interaction)
{
    const auto content = SwitcherContent::of(interaction, entries_);
    setVisible(content.has_value());
    if (!content)
        return;
    text_->setContent(Symbol::squareStack, content->text);
    const QSignalBlocker quiet(list_); // What the model chose is no choice of the person.
    showEntries(*content);
    list_->setCurrentRow(static_cast<int>(content->position));
}

void SwitcherSection::showEntries(const SwitcherContent& content)
{
    if (content.entries == entries_)
        return;
    entries_ = content.entries;
    list_->clear();
    for (const auto& entry : entries_) {
        auto* const item = new QListWidgetItem(QString::number(list_->count() + 1), list_);
        item->setTextAlignment(Qt::AlignCenter);
        item->setSizeHint(entrySize);
        item->setData(Qt::AccessibleTextRole, toQString(entry.label));
    }
}

void SwitcherSection::rowChosen(int row)
{
    const auto index = static_cast<std::size_t>(row);
    if (row >= 0 && index < entries_.size())
        model_.select(entries_[index].id);
}

} // namespace notch
