// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPlainTextEdit>

#include <string>

namespace notch {

// Text of any length to read, select and copy, never to edit. As high as its text, up to a limit;
// beyond that it scrolls.
class TextBlock final : public QPlainTextEdit {
public:
    enum class Ground { filled, absent };
    TextBlock(
        const QFont& font, const QColor& colour, int maxHeight, Ground ground, QWidget* parent);

    // Text made by visibleText(); a text that is there already keeps its selection and position.
    void setContent(const std::string& text);

    // Another colour for that many characters at the beginning.
    void setLeadIn(qsizetype length, const QColor& colour);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    // Of the text alone; not exact beyond maxHeight_.
    int textHeight(int width) const;

    int maxHeight_;
    int padding_;
    std::string content_;
};

} // namespace notch
