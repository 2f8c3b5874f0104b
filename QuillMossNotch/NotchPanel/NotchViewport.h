// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/NotchShape.h"
#include "Geometry/PanelGeometry.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace notch {

class SilhouetteMask;

// The content, pinned to the top and never scaled, on a black surface; both are cut to the
// silhouette with smooth edges. A smaller surface only covers what a larger one shows. Main thread.
class NotchViewport final : public QWidget {
public:
    // Brings the content up to date and fits it into a width and, as far as it can be, a height.
    // Returns the height that it needs, in points.
    using Fit = std::function<double(double width, double maxHeight)>;

    // The content must draw no background of its own.
    NotchViewport(std::unique_ptr<QWidget> hosting, Fit fit);
    ~NotchViewport() override;
    Q_DISABLE_COPY_MOVE(NotchViewport)

    QWidget& hosting() const { return *hosting_; }
    // The content's height when it was last fitted.
    double naturalHeight() const { return naturalHeight_; }

    // Brings the content up to date and lays it out; unless its height is a positive number,
    // naturalHeight() stays as it was. Returns naturalHeight().
    double fitContent(double width, double maxHeight);
    // The drawn surface hangs from the middle of the top edge.
    void setSurface(double width, double height);
    double surfaceWidth() const { return surfaceWidth_; }

    NotchShape silhouette() const;
    // The distance from the left edge to the silhouette.
    double silhouetteOffset() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();

    QWidget* hosting_; // A child; so is the mask, which stays above it.
    SilhouetteMask* silhouetteMask_;
    Fit fit_;
    double naturalHeight_ = 0;
    double surfaceWidth_ = maximumPanelWidth;
    double surfaceHeight_ = 0;
};

} // namespace notch
