// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/NotchPicture.h"
#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/MovingNotch.h"
#include "SelfCheck/Suite.h"

#include <QImage>

#include <cmath>
#include <vector>

namespace notch {
namespace {

constexpr int opaque = 128; // Half of a pixel and more is the surface's.

// What one row of a picture has of the surface, in pixels.
struct DrawnRow {
    int pieces = 0;
    int left = 0;
    int right = 0; // Behind the last pixel.
};

DrawnRow drawnRow(const QImage& picture, int y)
{
    DrawnRow row;
    bool before = false;
    for (int x = 0; x < picture.width(); ++x) {
        const bool drawn = qAlpha(picture.pixel(x, y)) >= opaque;
        if (drawn && !before && row.pieces++ == 0)
            row.left = x;
        if (drawn)
            row.right = x + 1;
        before = drawn;
    }
    return row;
}

// In each row of pixels it is drawn where it is, to a point.
bool drawsSilhouette(const QImage& picture, const NotchShape& shape, double offset)
{
    const double scale = picture.devicePixelRatio();
    const auto isAt = [&](int pixel, double point) {
        return std::abs(pixel / scale - offset - point) <= 1;
    };
    for (int y = 0; y < picture.height(); ++y) {
        const auto spans = shape.spansAt((y + 0.5) / scale);
        const auto row = drawnRow(picture, y);
        if (y + 1 > shape.height() * scale) { // Covered in part, or not at all.
            if (row.pieces > 1)
                return false;
        } else if (spans.size() != 1 || row.pieces != 1 || !isAt(row.left, spans[0].left)
                   || !isAt(row.right, spans[0].right)) {
            return false;
        }
    }
    return true;
}

bool isDrawn(const QImage& picture, QPointF point)
{
    const auto pixel = point * picture.devicePixelRatio();
    return qAlpha(picture.pixel(static_cast<int>(pixel.x()), static_cast<int>(pixel.y())))
        >= opaque;
}

} // namespace

void checkMask(Suite& suite)
{
    MovingNotch notch;
    auto& viewport = notch.panel.viewport();
    std::size_t frames = 0;
    bool drawn = true;
    notch.panel.frameApplied = [&] {
        ++frames;
        drawn = drawn
             && drawsSilhouette(
                 pictureOf(viewport), viewport.silhouette(), viewport.silhouetteOffset());
    };
    notch.play("layOut, ask A, wait 1, close, wait 1");
    suite.check("at every step what is drawn is the silhouette, in one piece: no neck and no card",
        frames > 20 && drawn);
    notch.panel.frameApplied = {};
    notch.play("open, wait 1");
    const auto picture = pictureOf(viewport);
    const double below = notch.panel.current.height;
    suite.check("the mask is the right way up: it flares at the top edge and is round below",
        isDrawn(picture, {5, 0.5}) && !isDrawn(picture, {5, 11})
            && isDrawn(picture, {20, below - 30}) && !isDrawn(picture, {14, below - 2})
            && isDrawn(picture, {40, below - 2}));
}

} // namespace notch
