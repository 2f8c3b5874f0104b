// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/YieldingArea.h"

#include "Style/NotchStyle.h"

#include <QScrollBar>

#include <algorithm>

namespace notch {

YieldingArea::YieldingArea(QWidget* content, QWidget* parent)
    : QScrollArea(parent)
{
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    style::makeQuiet(*verticalScrollBar());
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto policy = QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int YieldingArea::heightForWidth(int width) const
{
    return std::max(0, widget()->heightForWidth(width) - given_);
}

QSize YieldingArea::sizeHint() const
{
    return {widget()->sizeHint().width(), heightForWidth(width())};
}

} // namespace notch
