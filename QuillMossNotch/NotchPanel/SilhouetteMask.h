// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/NotchShape.h"

#include <QPainterPath>
#include <QWidget>

namespace notch {

QPainterPath painterPath(const NotchShape& shape);

// Lies over everything in its parent and takes away what is outside the silhouette, whoever has
// drawn it. Needs a window with an alpha channel.
class SilhouetteMask final : public QWidget {
public:
    explicit SilhouetteMask(QWidget* parent);

    // In the parent's coordinates.
    void setSilhouette(const QPainterPath& silhouette);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPainterPath silhouette_;
};

} // namespace notch
