// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/LayoutPass.h"

#include "AppModel/AppModel.h"

#include <cmath>
#include <utility>

namespace notch {

LayoutPass::LayoutPass(Surroundings surroundings)
    : around_(std::move(surroundings))
{
}

void LayoutPass::run()
{
    const auto screens = around_.screens();
    const ScreenRecord* screen = notchScreen(screens);
    if (!screen)
        return;
    const auto metrics = panelMetrics(*screen);
    if (metrics.notchHeight != renderedNotchHeight_) {
        renderedNotchHeight_ = metrics.notchHeight;
        around_.model.setNotchHeight(metrics.notchHeight);
    }
    if (!around_.model.state().interaction.expanded() && around_.panel.isKeyWindow())
        around_.panel.resignKeyWindow();
    if (publishWidths(metrics) || presentExpansion())
        around_.scheduleAnother();
    else
        moveTo(*screen, metrics);
}

// True: the content must be measured anew first.
bool LayoutPass::publishWidths(const PanelMetrics& metrics)
{
    const auto& state = around_.model.state();
    if (state.panelWidth == metrics.panelWidth && state.compactWidth == metrics.compactWidth)
        return false;
    around_.model.setWidths(metrics.panelWidth, metrics.compactWidth);
    return true;
}

// True: the content turns to its expanded form before the frame starts to grow.
bool LayoutPass::presentExpansion()
{
    const auto& state = around_.model.state();
    if (!state.interaction.expanded() || state.expansionPresentation == true)
        return false;
    around_.model.setExpansionPresentation(true);
    return true;
}

void LayoutPass::moveTo(const ScreenRecord& screen, const PanelMetrics& metrics)
{
    const bool expanded = around_.model.state().interaction.expanded();
    const double naturalHeight = around_.panel.fitContent(metrics.panelWidth, screen.frame.height);
    const double height = expanded ? naturalHeight : metrics.notchHeight + compactTextHeight;
    if (!std::isfinite(height) || height <= 0)
        return;
    if (expanded)
        around_.panel.setRoom(NotchSurface::Room::frame);
    const bool animated = around_.panel.isOnScreen() && !around_.reduceMotion();
    around_.animator.animate(panelFrame(screen, metrics.panelWidth, height),
        expanded ? metrics.panelWidth : metrics.compactWidth,
        animated ? VerticalRevealAnimator::Motion::animated
                 : VerticalRevealAnimator::Motion::immediate,
        [this, expanded] { reached(!expanded); });
}

// Only now does the content leave its expanded form: it must not change while it is being covered.
void LayoutPass::reached(bool collapsed)
{
    const auto& state = around_.model.state();
    if (collapsed && !state.interaction.expanded() && state.expansionPresentation == true) {
        around_.model.setExpansionPresentation(std::nullopt);
        around_.scheduleAnother();
    } else if (collapsed && !state.interaction.expanded()) {
        around_.panel.setRoom(NotchSurface::Room::surface);
    }
    around_.refreshHit();
}

} // namespace notch
