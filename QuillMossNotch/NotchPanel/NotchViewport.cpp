// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/NotchViewport.h"

#include "NotchPanel/SilhouetteMask.h"

#include <cmath>
#include <utility>

namespace notch {

NotchViewport::NotchViewport(std::unique_ptr<QWidget> hosting, Fit fit)
    : hosting_(hosting.release())
    , silhouetteMask_(new SilhouetteMask(this))
    , fit_(std::move(fit))
{
    QPalette black;
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    setAutoFillBackground(true);
    hosting_->setParent(this);
    hosting_->move(0, 0);
    silhouetteMask_->raise();
}

NotchViewport::~NotchViewport() = default;

double NotchViewport::fitContent(double width, double maxHeight)
{
    const double height = fit_(width, maxHeight);
    if (std::isfinite(height) && height > 0)
        naturalHeight_ = height;
    hosting_->resize(qRound(width), qRound(naturalHeight_));
    return naturalHeight_;
}

void NotchViewport::setSurface(double width, double height)
{
    surfaceWidth_ = width;
    surfaceHeight_ = height;
    layOut();
}

NotchShape NotchViewport::silhouette() const
{
    return NotchShape(boundedSurfaceWidth(surfaceWidth_, this->width()), surfaceHeight_);
}

double NotchViewport::silhouetteOffset() const
{
    return (width() - boundedSurfaceWidth(surfaceWidth_, width())) / 2;
}

void NotchViewport::resizeEvent(QResizeEvent*)
{
    layOut();
}

void NotchViewport::layOut()
{
    hosting_->resize(width(), qRound(naturalHeight_));
    silhouetteMask_->setGeometry(rect());
    silhouetteMask_->setSilhouette(painterPath(silhouette()).translated(silhouetteOffset(), 0));
}

} // namespace notch
