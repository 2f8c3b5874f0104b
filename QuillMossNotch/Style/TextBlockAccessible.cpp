// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextBlockAccessible.h"

#include "Style/TextBlock.h"

#include <algorithm>

namespace notch {
namespace {

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* const block = dynamic_cast<TextBlock*>(object);
    return block ? new TextBlockAccessible(*block) : nullptr;
}

} // namespace

TextBlockAccessible::TextBlockAccessible(TextBlock& block)
    : QAccessibleWidget(&block, QAccessible::EditableText)
    , block_(block)
{
}

void TextBlockAccessible::install()
{
    [[maybe_unused]] static const bool installed =
        (QAccessible::installFactory(makeAccessible), true);
}

void* TextBlockAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State TextBlockAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

QString TextBlockAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? block_.text() : QAccessibleWidget::text(kind);
}

void TextBlockAccessible::selection(int, int* start, int* end) const
{
    *start = std::min(block_.anchor(), block_.position());
    *end = std::max(block_.anchor(), block_.position());
}

int TextBlockAccessible::selectionCount() const
{
    return block_.anchor() == block_.position() ? 0 : 1;
}

void TextBlockAccessible::addSelection(int start, int end)
{
    block_.select(start, end);
}

void TextBlockAccessible::removeSelection(int)
{
    block_.select(block_.position(), block_.position());
}

void TextBlockAccessible::setSelection(int, int start, int end)
{
    block_.select(start, end);
}

int TextBlockAccessible::cursorPosition() const
{
    return block_.position();
}

void TextBlockAccessible::setCursorPosition(int position)
{
    block_.select(position, position);
    block_.scrollTo(block_.position());
}

QString TextBlockAccessible::text(int start, int end) const
{
    return block_.text().mid(start, end - start);
}

int TextBlockAccessible::characterCount() const
{
    return static_cast<int>(block_.text().size());
}

QRect TextBlockAccessible::characterRect(int offset) const
{
    const auto inBlock = block_.characterRect(offset);
    return {block_.mapToGlobal(inBlock.topLeft()), inBlock.size()};
}

int TextBlockAccessible::offsetAtPoint(const QPoint& point) const
{
    return block_.positionAt(block_.mapFromGlobal(QPointF(point)));
}

void TextBlockAccessible::scrollToSubstring(int start, int end)
{
    block_.scrollTo(end);
    block_.scrollTo(start);
}

QString TextBlockAccessible::attributes(int, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

} // namespace notch
