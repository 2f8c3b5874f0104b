// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace notch {

// As high as its content, less what it has to give way by; then it scrolls.
class YieldingArea final : public QScrollArea {
public:
    // `content` has a layout; the area takes it over.
    YieldingArea(QWidget* content, QWidget* parent);

    void giveWay(int points) { given_ = points; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }

private:
    int given_ = 0;
};

} // namespace notch
