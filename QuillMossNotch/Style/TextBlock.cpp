// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextBlock.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"
#include "Style/TextBlockAccessible.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <limits>

namespace notch {
namespace {

constexpr int filledPadding = 10;
constexpr int mostPasses = 32;

} // namespace

TextBlock::TextBlock(
    const QFont& font, const QColor& colour, int maxHeight, Ground ground, QWidget* parent)
    : QWidget(parent)
    , colour_(colour)
    , maxHeight_(maxHeight)
    , limit_(maxHeight)
    , padding_(ground == Ground::filled ? filledPadding : 0)
    , rows_(font)
    , bar_(new QScrollBar(Qt::Vertical, this))
{
    TextBlockAccessible::install();
    setFont(font);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
    style::makeQuiet(*bar_);
    bar_->setCursor(Qt::ArrowCursor);
    bar_->setSingleStep(static_cast<int>(rows_.rowHeight()));
    connect(bar_, &QScrollBar::valueChanged, this, [this] { settle(); });
    auto policy = QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextBlock::setContent(const std::string& text)
{
    const auto words = toQString(text);
    if (words == rows_.text())
        return;
    rows_.setText(words);
    setProperty("plainText", rows_.text());
    rewind();
    updateGeometry();
}

void TextBlock::rewind()
{
    anchor_ = position_ = 0;
    const QSignalBlocker quiet(bar_);
    bar_->setValue(0);
    settle();
}

void TextBlock::setLeadIn(qsizetype length, const QColor& colour)
{
    leadIn_.start = 0;
    leadIn_.length = static_cast<int>(length);
    leadIn_.format.setForeground(colour);
    update();
}

void TextBlock::setHeightLimit(int limit)
{
    limit_ = std::min(limit, maxHeight_);
}

int TextBlock::heightOfRows(int rows) const
{
    return static_cast<int>(rows * rows_.rowHeight()) + 2 * padding_;
}

// Without a padding the scroll bar has a strip of its own, so that it covers no text.
double TextBlock::textWidth(int width) const
{
    return std::max(1, padding_ > 0 ? width - 2 * padding_ : width - style::scrollBarWidth);
}

void TextBlock::fitRows(int width) const
{
    if (rows_.width() != textWidth(width))
        rows_.setWidth(textWidth(width));
}

int TextBlock::heightForWidth(int width) const
{
    fitRows(width);
    const int enough = static_cast<int>(limit_ / rows_.rowHeight()) + 1;
    rows_.layOut(0, enough);
    return std::min(limit_, heightOfRows(std::min(rows_.count(), enough)));
}

QSize TextBlock::sizeHint() const
{
    constexpr int usualWidth = 200;
    return {usualWidth, heightForWidth(std::max(width(), usualWidth))};
}

// Lays out the visible rows and corrects the scroll bar, until both agree: a text may turn out to
// have more or fewer rows than estimated, and then other rows are visible.
void TextBlock::settle()
{
    fitRows(width());
    const QSignalBlocker quiet(bar_);
    const double height = rows_.rowHeight();
    const bool atEnd = bar_->value() > 0 && bar_->value() == bar_->maximum();
    bar_->setPageStep(std::max(room(), 1));
    for (int pass = 0, count = -1; count != rows_.count() && pass < mostPasses; ++pass) {
        count = rows_.count();
        const int first = static_cast<int>(bar_->value() / height);
        const int last = static_cast<int>((bar_->value() + room()) / height);
        const int growthAbove = rows_.layOut(first, last);
        const int over = static_cast<int>(
            std::min<double>(rows_.count() * height - room(), std::numeric_limits<int>::max()));
        bar_->setMaximum(std::max(over, 0));
        bar_->setValue(
            atEnd ? bar_->maximum() : bar_->value() + static_cast<int>(growthAbove * height));
    }
    bar_->setVisible(bar_->maximum() > 0);
    update();
}

void TextBlock::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    bar_->setGeometry(width() - style::scrollBarWidth, 0, style::scrollBarWidth,
        height() - style::scrollBarWidth - 3);
    settle();
}

void TextBlock::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        rewind();
}

QList<QTextLayout::FormatRange> TextBlock::formats() const
{
    QTextLayout::FormatRange selection;
    selection.start = std::min(anchor_, position_);
    selection.length = std::abs(position_ - anchor_);
    selection.format.setForeground(style::text);
    selection.format.setBackground(style::accent.darker(160));
    return {leadIn_, selection};
}

void TextBlock::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (padding_ > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(style::white(0.08));
        painter.drawRoundedRect(rect(), padding_, padding_);
    }
    painter.save();
    painter.setPen(colour_);
    painter.setClipRect(rect().adjusted(0, padding_, 0, -padding_));
    painter.translate(padding_, padding_ - bar_->value());
    rows_.paint(painter, bar_->value(), bar_->value() + room(), formats());
    painter.restore();
    if (bar_->value() < bar_->maximum())
        paintMoreMark(painter);
}

// At the lower end of the scroll bar's strip, where it covers no text.
void TextBlock::paintMoreMark(QPainter& painter) const
{
    QRectF mark(0, 0, style::scrollBarWidth, style::scrollBarWidth);
    mark.moveBottomRight(rect().toRectF().bottomRight() - QPointF(1, 2));
    paintSymbol(painter, mark, Symbol::chevronDown, style::warning);
}

// Selecting and copying

void TextBlock::select(int anchor, int position)
{
    const auto end = static_cast<int>(text().size());
    anchor_ = std::clamp(anchor, 0, end);
    position_ = std::clamp(position, 0, end);
    update();
}

QString TextBlock::selectedText() const
{
    return text().mid(std::min(anchor_, position_), std::abs(position_ - anchor_));
}

void TextBlock::copy() const
{
    if (anchor_ != position_)
        QApplication::clipboard()->setText(selectedText());
}

void TextBlock::scrollTo(int position)
{
    const int top = static_cast<int>(rows_.placeOf(position).y() * rows_.rowHeight());
    const int bottom = top + static_cast<int>(rows_.rowHeight());
    if (top < bar_->value() || bottom > bar_->value() + room())
        bar_->setValue(top < bar_->value() ? top : bottom - room());
}

QRect TextBlock::characterRect(int position)
{
    const auto place = rows_.placeOf(position);
    const auto next = rows_.placeOf(position + 1);
    const double width = next.y() == place.y() ? next.x() - place.x() : 0;
    return QRectF(padding_ + place.x(), padding_ + place.y() * rows_.rowHeight() - bar_->value(),
        width, rows_.rowHeight())
        .toRect();
}

int TextBlock::positionAt(QPointF point)
{
    return rows_.positionAt({point.x() - padding_, point.y() - padding_ + bar_->value()});
}

void TextBlock::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int at = positionAt(event->position());
    select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : at, at);
}

void TextBlock::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    select(anchor_, positionAt(event->position()));
    scrollTo(position_);
}

void TextBlock::mouseReleaseEvent(QMouseEvent*)
{
    auto& clipboard = *QApplication::clipboard();
    if (clipboard.supportsSelection() && anchor_ != position_)
        clipboard.setText(selectedText(), QClipboard::Selection);
}

void TextBlock::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The row is enough for a word, and the text may be long.
    const int at = positionAt(event->position());
    const auto [start, end] = rows_.extentOf(static_cast<int>(rows_.placeOf(at).y()));
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text().mid(start, end - start));
    words.setPosition(std::min(at - start + 1, end - start));
    const auto from = std::max<qsizetype>(words.toPreviousBoundary(), 0);
    const auto to = std::max(words.toNextBoundary(), from);
    select(start + static_cast<int>(from), start + static_cast<int>(to));
}

// Keys

void TextBlock::keyPressEvent(QKeyEvent* event)
{
    const auto end = static_cast<int>(text().size());
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        select(0, end);
    else if (const int moved = movedByKey(*event); moved < 0)
        QWidget::keyPressEvent(event);
    else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        select(anchor_, moved);
        scrollTo(position_);
    } else {
        scrollByKey(event->key());
    }
}

// Where the selection would reach to; less than 0 for any other key.
int TextBlock::movedByKey(const QKeyEvent& event)
{
    const auto place = rows_.placeOf(position_);
    const auto inRow = [&](double rows) {
        return rows_.positionAt({place.x(), (place.y() + rows + 0.5) * rows_.rowHeight()});
    };
    const auto [start, end] = rows_.extentOf(static_cast<int>(place.y()));
    const bool whole = event.modifiers().testFlag(Qt::ControlModifier);
    const double page = std::max(1.0, std::floor(room() / rows_.rowHeight()));
    switch (event.key()) {
    case Qt::Key_Left:
        return std::max(position_ - 1, 0);
    case Qt::Key_Right:
        return position_ + 1;
    case Qt::Key_Up:
        return inRow(-1);
    case Qt::Key_Down:
        return inRow(1);
    case Qt::Key_PageUp:
        return inRow(-page);
    case Qt::Key_PageDown:
        return inRow(page);
    case Qt::Key_Home:
        return whole ? 0 : start;
    case Qt::Key_End:
        return whole ? static_cast<int>(text().size()) : end;
    }
    return -1;
}

void TextBlock::scrollByKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return bar_->triggerAction(QScrollBar::SliderSingleStepSub);
    case Qt::Key_Down:
        return bar_->triggerAction(QScrollBar::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return bar_->triggerAction(QScrollBar::SliderPageStepSub);
    case Qt::Key_PageDown:
        return bar_->triggerAction(QScrollBar::SliderPageStepAdd);
    case Qt::Key_Home:
        return bar_->triggerAction(QScrollBar::SliderToMinimum);
    case Qt::Key_End:
        return bar_->triggerAction(QScrollBar::SliderToMaximum);
    }
}

void TextBlock::wheelEvent(QWheelEvent* event)
{
    QCoreApplication::sendEvent(bar_, event);
}

} // namespace notch
