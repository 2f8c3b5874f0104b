// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/TextRows.h"

#include <QColor>
#include <QWidget>

#include <cstdint>
#include <string>

class QScrollBar;

namespace notch {

// Text of any length to read, select and copy, never to edit. As high as its text, up to a limit;
// beyond that it scrolls, and a mark says that there is more below.
//
// It costs as much as what is seen of it: a text of a mebibyte, in one line or in a million, is
// shown as fast as a short one. A screen reader has the whole text.
class TextBlock final : public QWidget {
public:
    enum class Ground : std::uint8_t { filled, absent };
    TextBlock(
        const QFont& font, const QColor& colour, int maxHeight, Ground ground, QWidget* parent);

    // Text made by visibleText(), from its first line on and with nothing selected; a text that is
    // there already stays as it is.
    void setContent(const std::string& text);
    // Back to the first line, with nothing selected; so does coming onto the screen.
    void rewind();
    // Gives that many characters at the beginning another colour.
    void setLeadIn(qsizetype length, const QColor& colour);
    // Keeps the block no higher than this for now, where the screen is low.
    void setHeightLimit(int limit);
    int maxHeight() const { return maxHeight_; }
    // The height of a text of that many rows.
    int heightOfRows(int rows) const;

    const QString& text() const { return rows_.text(); }
    // The selection reaches from the anchor to the position, in UTF-16 units.
    int anchor() const { return anchor_; }
    int position() const { return position_; }
    void select(int anchor, int position);
    QString selectedText() const;
    void copy() const;
    void scrollTo(int position);
    // The character's place, in this widget's coordinates.
    QRect characterRect(int position);
    int positionAt(QPointF point);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    double textWidth(int width) const;
    void fitRows(int width) const;
    int room() const { return height() - 2 * padding_; }
    void settle();
    void scrollByKey(int key);
    int movedByKey(const QKeyEvent& event);
    void paintMoreMark(QPainter& painter) const;
    QList<QTextLayout::FormatRange> formats() const;

    QColor colour_;
    int maxHeight_;
    int limit_; // maxHeight_, or less for now.
    int padding_;
    mutable TextRows rows_; // Measuring lays rows out.
    QScrollBar* bar_;
    QTextLayout::FormatRange leadIn_{}; // The class leaves its numbers unset.
    int anchor_ = 0;
    int position_ = 0;
};

} // namespace notch
