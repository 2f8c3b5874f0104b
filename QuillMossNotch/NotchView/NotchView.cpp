// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/NotchView.h"

#include "NotchView/Announcer.h"
#include "NotchView/ApprovalSection.h"
#include "NotchView/CompactButton.h"
#include "NotchView/CompactContent.h"
#include "NotchView/CompletionSection.h"
#include "NotchView/HeaderContent.h"
#include "NotchView/HeaderSection.h"
#include "NotchView/IdleContent.h"
#include "NotchView/IdleSection.h"
#include "NotchView/QuestionSection.h"
#include "NotchView/ReceiptSection.h"
#include "Style/ActionButton.h"
#include "Style/NotchStyle.h"
#include "Style/TextLine.h"

#include <QAccessible>
#include <QVBoxLayout>

#include <chrono>
#include <cmath>
#include <utility>

namespace notch {
namespace {

// From the silhouette's straight sides, and from its lower edge.
constexpr int sideMargin = 12 + 20;
constexpr int lowerMargin = 18;

// A timer that fires too early by a hair would show the same second once more.
constexpr Seconds tickSlack{0.005};

// So that fit() measures what is to be seen now and no layout remembers what was; Qt does
// the same, but not before its event loop runs again.
void invalidateLayouts(QWidget& root)
{
    for (auto* const child : root.findChildren<QWidget*>())
        child->updateGeometry();
    for (auto* const nested : root.findChildren<QLayout*>())
        nested->invalidate();
    root.updateGeometry();
}

// What cannot be seen cannot be pressed either, by a screen reader's action for one.
void setOnShow(QWidget* part, bool shows)
{
    if (!part)
        return;
    part->setVisible(shows);
    part->setEnabled(shows);
}

void setReducesMotionOf(const QWidget& root, bool reduces)
{
    for (auto* const button : root.findChildren<QAbstractButton*>()) {
        if (auto* const action = dynamic_cast<ActionButton*>(button))
            action->setReducesMotion(reduces);
    }
}

} // namespace

NotchView::NotchView(AppModel& model, const Clock& clock, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , clock_(clock)
    , compact_(new CompactButton(this))
    , content_(new QWidget(this))
    , header_(new HeaderSection(model, content_))
    , failure_(new TextLine(style::font(10), style::warning, content_))
    , announcer_(new Announcer(this))
{
    build();
    tick_.setSingleShot(true);
    tick_.setTimerType(Qt::PreciseTimer);
    connect(&tick_, &QTimer::timeout, this, [this] { tick(); });
    connect(compact_, &QAbstractButton::clicked, this, [this] {
        if (model_.state().isExpanded())
            model_.collapse();
        else
            model_.expand();
    });
    refresh();
}

NotchView::~NotchView()
{
    delete dropped_;
}

void NotchView::build()
{
    setFont(style::font(12));
    auto colours = palette();
    colours.setColor(QPalette::Window, style::surface);
    colours.setColor(QPalette::WindowText, style::text);
    setPalette(colours);
    compact_->setObjectName(QStringLiteral("compact"));

    auto* const column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetNoConstraint); // The host sets the size.
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(compact_, 0, Qt::AlignHCenter | Qt::AlignTop);
    column->addWidget(content_);
    column->addStretch(1);

    auto* const open = new QVBoxLayout(content_);
    open->setContentsMargins(sideMargin, 4, sideMargin, lowerMargin);
    open->setSpacing(12);
    open->addWidget(header_); // The section on show comes after it.
    open->addWidget(failure_);
    failure_->setObjectName(QStringLiteral("failure"));
}

void NotchView::refresh()
{
    if (state_ == model_.state()) {
        tick();
        return;
    }
    state_ = model_.state();
    compact_->setMetrics(state_->compactWidth, state_->notchHeight);
    compact_->present(CompactContent(*state_));
    setOnShow(content_, state_->isExpanded());
    if (state_->isExpanded())
        showOpenContent();
    if (state_->interaction.requests().empty())
        dropApproval();
    invalidateLayouts(*this);
    tick();
    announce();
}

void NotchView::showOpenContent()
{
    const auto shown = displayState(*state_);
    header_->present(HeaderContent(*state_));
    setOnShow(receipt_, shown == DisplayState::receipt);
    setOnShow(approval_, shown == DisplayState::approval);
    setOnShow(question_, shown == DisplayState::question);
    setOnShow(completion_, shown == DisplayState::completion);
    setOnShow(idle_, shown == DisplayState::idle);
    present(shown);
    showFailure();
}

void NotchView::present(DisplayState shown)
{
    switch (shown) {
    case DisplayState::receipt:
        return built(receipt_).present(state_->interaction);
    case DisplayState::approval:
        return built(approval_, clock_).present(*state_);
    case DisplayState::question:
        return built(question_).present(*state_);
    case DisplayState::completion:
        return built(completion_).present(*state_);
    case DisplayState::idle:
        return built(idle_).present(IdleContent(*state_));
    }
}

template <class Section, class... Needs>
Section& NotchView::built(Section*& section, Needs&... needs)
{
    if (section)
        return *section;
    section = new Section(model_, needs..., content_);
    setReducesMotionOf(*section, reducesMotion_);
    static_cast<QVBoxLayout*>(content_->layout())->insertWidget(1, section);
    section->show();
    return *section;
}

// Out of sight at once, but deleted later: this may run in an event of one of its buttons.
void NotchView::dropApproval()
{
    if (!approval_)
        return;
    setOnShow(approval_, false);
    delete dropped_;
    dropped_ = std::exchange(approval_, nullptr);
    dropped_->setParent(nullptr);
    dropped_->deleteLater();
}

void NotchView::showFailure()
{
    const auto& failure = state_->failure;
    failure_->setVisible(failure.has_value());
    if (!failure)
        return;
    failure_->setContent(Symbol::exclamationmarkShield, *failure);
    setPlainToolTip(*failure_, *failure);
}

void NotchView::tick()
{
    tick_.stop();
    const bool counting =
        isVisible() && state_->isExpanded() && displayState(*state_) == DisplayState::approval;
    if (!counting)
        return;
    if (const auto next = approval_ ? approval_->showTime() : std::nullopt)
        tick_.start(std::chrono::ceil<std::chrono::milliseconds>(*next + tickSlack));
}

void NotchView::announce()
{
    if (!isVisible() || !QAccessible::isActive())
        return; // Nobody listens.
    if (const auto text = announcements_.next(*state_, clock_.now()))
        announcer_->announce(*text);
}

int NotchView::neededHeight(int width) const
{
    return layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                         : layout()->totalSizeHint().height();
}

void NotchView::shrink(int width, int points)
{
    approval_->shrink(width - 2 * sideMargin, points);
    invalidateLayouts(*this);
}

int NotchView::fit(int width, int maxHeight)
{
    if (!approval_ || approval_->isHidden())
        return neededHeight(width);
    shrink(width, 0);
    const int needed = neededHeight(width);
    if (needed <= maxHeight)
        return needed;
    shrink(width, needed - maxHeight);
    return neededHeight(width);
}

void NotchView::setReducesMotion(bool reduces)
{
    reducesMotion_ = reduces;
    setReducesMotionOf(*this, reduces);
}

std::optional<ShownDecision> NotchView::decision() const
{
    if (approval_ && approval_->isVisible())
        return approval_->decision();
    if (question_ && question_->isVisible())
        return question_->decision();
    if (completion_ && completion_->isVisible())
        return completion_->decision();
    return std::nullopt;
}

void NotchView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    tick();
    announce();
}

void NotchView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    tick();
}

} // namespace notch
