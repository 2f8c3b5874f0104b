// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextRows.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

constexpr int longestPiece = 600;
constexpr std::size_t mostLaidOut = 64;
constexpr double continuationIndent = 9; // Differs from the width of any number of blanks.
constexpr QChar leftToRightOverride{0x202D};
constexpr char16_t firstRightToLeft = 0x0590;

// Scripts that run from right to left, and whatever else could reorder its neighbours.
bool mayReorder(QStringView text)
{
    return std::ranges::any_of(
        text, [](QChar character) { return character.unicode() >= firstRightToLeft; });
}

// Characters before the piece's own that only serve its layout.
int lead(const QTextLayout& layout)
{
    return layout.text().startsWith(leftToRightOverride) ? 1 : 0;
}

QTextOption optionOfRows()
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LeftToRight);
    return option;
}

} // namespace

TextRows::TextRows(const QFont& font)
    : font_(font)
{
    const QFontMetricsF metrics(font);
    rowHeight_ = std::ceil(metrics.lineSpacing());
    ascent_ = metrics.ascent();
    usualWidth_ = metrics.averageCharWidth();
}

void TextRows::setText(const QString& text)
{
    text_ = text;
    laidOut_.clear();
    pieces_.clear();
    const auto size = static_cast<int>(text.size());
    for (int start = 0; start <= size;) {
        const auto feed = static_cast<int>(text.indexOf(u'\n', start));
        const int end = feed < 0 ? size : feed;
        addLine(start, end);
        start = end + 1;
    }
    pieces_.push_back({size + 1, 0});
    setWidth(width_);
}

void TextRows::addLine(int start, int end)
{
    pieces_.push_back({start, 0});
    for (start += longestPiece; start < end; start += longestPiece) {
        if (text_[start].isLowSurrogate())
            --start;
        pieces_.push_back({start, 0});
    }
}

void TextRows::setWidth(double width)
{
    width_ = width;
    laidOut_.clear();
    int row = 0;
    for (int piece = 0; piece + 1 < static_cast<int>(pieces_.size()); ++piece) {
        pieces_[static_cast<std::size_t>(piece)].firstRow = row;
        const double length = lengthOf(piece) * usualWidth_;
        row += width > 0 ? std::max(1, static_cast<int>(std::ceil(length / width))) : 1;
    }
    pieces_.back().firstRow = row;
}

bool TextRows::continuesLine(int piece) const
{
    const int start = pieces_[static_cast<std::size_t>(piece)].start;
    return start > 0 && start <= text_.size() && text_[start - 1] != u'\n';
}

int TextRows::lengthOf(int piece) const
{
    const auto at = static_cast<std::size_t>(piece);
    return pieces_[at + 1].start - pieces_[at].start - (continuesLine(piece + 1) ? 0 : 1);
}

int TextRows::pieceAtRow(int row) const
{
    const auto after = std::ranges::upper_bound(
        pieces_.begin(), pieces_.end() - 1, std::max(row, 0), {}, &Piece::firstRow);
    return static_cast<int>(after - pieces_.begin()) - 1;
}

int TextRows::pieceAt(int position) const
{
    const auto after = std::ranges::upper_bound(
        pieces_.begin(), pieces_.end() - 1, std::max(position, 0), {}, &Piece::start);
    return static_cast<int>(after - pieces_.begin()) - 1;
}

const QTextLayout& TextRows::laidOut(int piece)
{
    if (const auto known = laidOut_.find(piece); known != laidOut_.end())
        return *known->second;
    if (laidOut_.size() >= mostLaidOut)
        laidOut_.clear();
    const auto& layout = *(laidOut_[piece] = layOutPiece(piece));
    setRows(piece, std::max(layout.lineCount(), 1));
    return layout;
}

std::unique_ptr<QTextLayout> TextRows::layOutPiece(int piece) const
{
    auto text = text_.mid(pieces_[static_cast<std::size_t>(piece)].start, lengthOf(piece));
    if (mayReorder(text))
        text.prepend(leftToRightOverride);
    auto layout = std::make_unique<QTextLayout>(text, font_);
    layout->setTextOption(optionOfRows());
    layout->setCacheEnabled(true);
    layout->beginLayout();
    double indent = continuesLine(piece) ? continuationIndent : 0;
    int row = 0;
    for (auto line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(std::max(width_ - indent, 1.0));
        line.setPosition({indent, row++ * rowHeight_ + ascent_ - line.ascent()});
        indent = continuationIndent;
    }
    layout->endLayout();
    return layout;
}

void TextRows::setRows(int piece, int rows)
{
    const auto next = pieces_.begin() + piece + 1;
    const int growth = rows - (next->firstRow - std::prev(next)->firstRow);
    if (growth != 0)
        std::for_each(next, pieces_.end(), [growth](Piece& later) { later.firstRow += growth; });
}

int TextRows::layOut(int first, int last)
{
    int growthAbove = 0;
    for (int row = first; row <= last && row < count();) {
        const auto piece = pieceAtRow(row);
        const auto& next = pieces_[static_cast<std::size_t>(piece) + 1];
        const int before = next.firstRow;
        const bool beginsAbove = pieces_[static_cast<std::size_t>(piece)].firstRow < first;
        laidOut(piece);
        if (beginsAbove)
            growthAbove += next.firstRow - before;
        row = std::max(next.firstRow, row + 1);
    }
    return growthAbove;
}

int TextRows::positionAt(QPointF point)
{
    const int row =
        std::clamp(static_cast<int>(std::floor(point.y() / rowHeight_)), 0, count() - 1);
    const int piece = pieceAtRow(row);
    const auto& layout = laidOut(piece);
    const auto& [start, firstRow] = pieces_[static_cast<std::size_t>(piece)];
    const auto line = layout.lineAt(std::min(row - firstRow, layout.lineCount() - 1));
    const int at = line.isValid() ? line.xToCursor(point.x()) - lead(layout) : 0;
    return start + std::clamp(at, 0, lengthOf(piece));
}

QPointF TextRows::placeOf(int position)
{
    const int piece = pieceAt(position);
    const auto& layout = laidOut(piece);
    const auto& [start, firstRow] = pieces_[static_cast<std::size_t>(piece)];
    const int at = position - start + lead(layout);
    const auto line = layout.lineForTextPosition(at);
    if (!line.isValid())
        return {0, static_cast<double>(firstRow)};
    return {line.cursorToX(at), static_cast<double>(firstRow + line.lineNumber())};
}

std::pair<int, int> TextRows::extentOf(int row)
{
    const double middle = (row + 0.5) * rowHeight_;
    const int start = positionAt({-1, middle});
    return {start, std::max(start, positionAt({width_ * 2, middle}))};
}

void TextRows::paint(
    QPainter& painter, double top, double bottom, const QList<QTextLayout::FormatRange>& formats)
{
    const int first = static_cast<int>(std::floor(top / rowHeight_));
    const int last = static_cast<int>(std::ceil(bottom / rowHeight_));
    layOut(first, last);
    for (int row = std::max(first, 0); row < std::min(last, count()); ++row)
        paintRow(painter, row, formats);
}

// Nothing of a row is drawn outside it, however high its marks are piled up.
void TextRows::paintRow(QPainter& painter, int row, const QList<QTextLayout::FormatRange>& formats)
{
    const int piece = pieceAtRow(row);
    const auto& layout = laidOut(piece);
    const auto& [start, firstRow] = pieces_[static_cast<std::size_t>(piece)];
    const int length = lengthOf(piece);
    QList<QTextLayout::FormatRange> own;
    for (const auto& range : formats) {
        const int from = std::clamp(range.start - start, 0, length);
        const int to = std::clamp(range.start + range.length - start, 0, length);
        if (from < to)
            own.push_back({from + lead(layout), to - from, range.format});
    }
    const QRectF area(0, row * rowHeight_, width_, rowHeight_);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    layout.draw(&painter, {0, firstRow * rowHeight_}, own, area.adjusted(0, 1, 0, -1));
    painter.restore();
}

} // namespace notch
