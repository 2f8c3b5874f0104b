// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTextLayout>

#include <map>
#include <memory>
#include <vector>

class QPainter;

namespace notch {

// A text of any length as rows of one height, broken at one width. Only the rows that are asked for
// are laid out; the number of all others is estimated until they are. Characters are drawn in the
// order in which they are stored, whatever their script. A row that continues a line is indented a
// little, so that it cannot be taken for a line of its own.
//
// Positions count UTF-16 units from the text's beginning; rows and heights are in points from the
// top of the first row.
class TextRows {
public:
    explicit TextRows(const QFont& font);

    void setText(const QString& text);
    const QString& text() const { return text_; }
    void setWidth(double width);
    double width() const { return width_; }

    double rowHeight() const { return rowHeight_; }
    int count() const { return pieces_.back().firstRow; }
    // Lays these rows out. Returns by how many rows the text above `last` has grown since rows that
    // begin above `first` turned out to be more, or fewer, than estimated.
    int layOut(int first, int last);

    int positionAt(QPointF point);
    // The row of a position, and how far from the left edge it is.
    QPointF placeOf(int position);
    // The positions where the row begins and ends.
    std::pair<int, int> extentOf(int row);
    // The rows that lie within these heights, with formats at positions of the text.
    void paint(QPainter& painter, double top, double bottom,
        const QList<QTextLayout::FormatRange>& formats);

private:
    // A line, or a part of a line that is too long to be laid out at once.
    struct Piece {
        int start = 0;
        int firstRow = 0;
    };

    void addLine(int start, int end);
    bool continuesLine(int piece) const;
    int lengthOf(int piece) const;
    int pieceAtRow(int row) const;
    int pieceAt(int position) const;
    const QTextLayout& laidOut(int piece);
    std::unique_ptr<QTextLayout> layOutPiece(int piece) const;
    void setRows(int piece, int rows);
    void paintRow(QPainter& painter, int row, const QList<QTextLayout::FormatRange>& formats);

    QFont font_;
    double rowHeight_;
    double ascent_;
    double usualWidth_; // A letter's.
    QString text_;
    double width_ = 0;
    std::vector<Piece> pieces_{{}, {1, 1}}; // One more marks the end.
    std::map<int, std::unique_ptr<QTextLayout>> laidOut_; // The pieces used last.
};

} // namespace notch
