// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>

namespace notch {

class TextBlock;

// A block of text as a screen reader has it: the whole text, read-only, with what is selected.
class TextBlockAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit TextBlockAccessible(TextBlock& block);

    // Once a process, before the first block is asked for.
    static void install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

private:
    TextBlock& block_;
};

} // namespace notch
