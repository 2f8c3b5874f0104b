// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/NotchPicture.h"

#include "NotchPanel/NotchViewport.h"
#include "NotchView/NotchView.h"

#include <QPainter>

#include <cmath>
#include <memory>

namespace notch {
namespace {

constexpr double tallest = 10'000; // A picture has room for everything.

} // namespace

QImage pictureOf(QWidget& widget)
{
    const double ratio = widget.devicePixelRatioF();
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    widget.render(&image);
    return image;
}

QImage pictureOfNotch(AppModel& model, const Clock& clock)
{
    auto owned = std::make_unique<NotchView>(model, clock);
    auto& view = *owned;
    NotchViewport viewport(std::move(owned), [&view](double width, double maxHeight) {
        return view.fit(static_cast<int>(width), static_cast<int>(maxHeight));
    });
    const auto& state = model.state();
    const double natural = viewport.fitContent(state.panelWidth, tallest);
    const bool open = state.isExpanded();
    const double height = open ? natural : state.notchHeight + compactTextHeight;
    viewport.resize(qRound(state.panelWidth), qRound(height));
    viewport.setSurface(open ? state.panelWidth : state.compactWidth, height);
    return pictureOf(viewport);
}

} // namespace notch
