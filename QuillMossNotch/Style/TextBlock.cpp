// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextBlock.h"

#include "Style/NotchStyle.h"
#include "Style/VisibleText.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

constexpr int filledPadding = 10;
// The editor scrolls unless a little more than its text fits.
constexpr int scrollSlack = 4;

// A quiet scroll bar, and the ground under the text.
QString styleSheetOf(int padding)
{
    const auto ground = padding > 0
                          ? QStringLiteral("background: rgba(255,255,255,20); border-radius: 10px;")
                          : QStringLiteral("background: transparent;");
    return QStringLiteral("QPlainTextEdit { border: none; padding: %1px; %2 }"
                          "QScrollBar:vertical { background: transparent; width: 8px; }"
                          "QScrollBar::handle:vertical { background: rgba(255,255,255,90);"
                          " border-radius: 3px; min-height: 24px; margin: 1px; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
        .arg(padding)
        .arg(ground);
}

} // namespace

TextBlock::TextBlock(
    const QFont& font, const QColor& colour, int maxHeight, Ground ground, QWidget* parent)
    : QPlainTextEdit(parent)
    , maxHeight_(maxHeight)
    , padding_(ground == Ground::filled ? filledPadding : 0)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setContextMenuPolicy(Qt::NoContextMenu);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setStyleSheet(styleSheetOf(padding_));
    setFont(font);
    auto colours = palette();
    colours.setColor(QPalette::Text, colour);
    colours.setColor(QPalette::Highlight, style::accent.darker(160));
    colours.setColor(QPalette::HighlightedText, style::text);
    setPalette(colours);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    auto option = document()->defaultTextOption();
    option.setTextDirection(Qt::LeftToRight);
    document()->setDefaultTextOption(option);
    auto policy = QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextBlock::setContent(const std::string& text)
{
    if (text == content_)
        return;
    content_ = text;
    setPlainText(toQString(text));
    updateGeometry();
}

void TextBlock::setLeadIn(qsizetype length, const QColor& colour)
{
    QTextEdit::ExtraSelection leadIn;
    leadIn.cursor = QTextCursor(document());
    leadIn.cursor.movePosition(
        QTextCursor::NextCharacter, QTextCursor::KeepAnchor, static_cast<int>(length));
    leadIn.format.setForeground(colour);
    setExtraSelections({leadIn});
}

int TextBlock::textHeight(int width) const
{
    double height = 0;
    QTextLayout layout;
    for (auto block = document()->begin(); block.isValid() && height <= maxHeight_;
         block = block.next()) {
        layout.setText(block.text());
        layout.setFont(font());
        layout.setTextOption(document()->defaultTextOption());
        layout.beginLayout();
        for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLeadingIncluded(true);
            line.setLineWidth(width);
            height += line.height();
        }
        layout.endLayout();
    }
    return static_cast<int>(std::ceil(height));
}

int TextBlock::heightForWidth(int width) const
{
    const int edges = 2 * padding_;
    return std::min(maxHeight_, textHeight(width - edges) + edges + scrollSlack);
}

void TextBlock::resizeEvent(QResizeEvent* event)
{
    const int edges = 2 * padding_;
    const bool fits = textHeight(width() - edges) + edges <= height();
    setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    QPlainTextEdit::resizeEvent(event);
}

QSize TextBlock::sizeHint() const
{
    return {200, heightForWidth(std::max(width(), 200))};
}

QMimeData* TextBlock::createMimeDataFromSelection() const
{
    // What only serves to show the text in order and in lines is no part of it.
    auto selected = textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n');
    for (const auto ours : {softBreak, leftToRightOverride, popDirectionalFormatting})
        selected.remove(toQString(ours));
    auto* const mime = new QMimeData;
    mime->setText(selected);
    return mime;
}

} // namespace notch
