// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QAbstractButton>

namespace notch {

struct CompactContent;

// The strip that opens and closes the notch. Its words are below the display's own notch.
class CompactButton final : public QAbstractButton {
public:
    explicit CompactButton(QWidget* parent);

    void present(const CompactContent& content);
    // The strip's size: the closed surface's width, and the display's notch above the words.
    void setMetrics(double compactWidth, double notchHeight);

    QSize sizeHint() const override { return size_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize size_{240, 56};
    bool attention_ = false;
    Symbol symbol_ = Symbol::none;
};

} // namespace notch
