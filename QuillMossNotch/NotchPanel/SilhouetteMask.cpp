// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/SilhouetteMask.h"

#include <QPainter>

namespace notch {

namespace {

QPointF qPoint(Point point)
{
    return {point.x, point.y};
}

} // namespace

QPainterPath painterPath(const NotchShape& shape)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const auto& [kind, end, control] : shape.elements()) {
        switch (kind) {
        case NotchShape::Element::Kind::move:
            path.moveTo(qPoint(end));
            break;
        case NotchShape::Element::Kind::line:
            path.lineTo(qPoint(end));
            break;
        case NotchShape::Element::Kind::curve:
            path.quadTo(qPoint(control), qPoint(end));
            break;
        case NotchShape::Element::Kind::close:
            path.closeSubpath();
            break;
        }
    }
    return path;
}

SilhouetteMask::SilhouetteMask(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void SilhouetteMask::setSilhouette(const QPainterPath& silhouette)
{
    silhouette_ = silhouette;
    update();
}

void SilhouetteMask::paintEvent(QPaintEvent*)
{
    // Odd-even: a rectangle less the silhouette. Its own edges are beyond the widget's: at a
    // fractional scale they would be smoothed, and leave a line of what is to be taken away.
    QPainterPath outside;
    outside.addRect(rect().adjusted(-2, -2, 2, 2));
    outside.addPath(silhouette_);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
}

} // namespace notch
