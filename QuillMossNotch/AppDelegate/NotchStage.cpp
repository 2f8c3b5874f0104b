// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/NotchStage.h"

#include "NotchPanel/NotchViewport.h"
#include "Platform/Display/ReducedMotion.h"
#include "Platform/Toolkit/FontPages.h"
#include "Style/AccessibleRole.h"

#include <cmath>
#include <memory>
#include <utility>

namespace notch {

namespace {

constexpr Seconds releaseDelay{1}; // Until the closing has been drawn.

NotchView& addView(NotchPanel& panel, AppModel& model, const Clock& clock)
{
    auto owned = std::make_unique<NotchView>(model, clock);
    NotchView& view = *owned;
    panel.setContentView(
        std::make_unique<NotchViewport>(std::move(owned), [&view](double width, double maxHeight) {
            view.refresh();
            return view.fit(
                static_cast<int>(std::lround(width)), static_cast<int>(std::floor(maxHeight)));
        }));
    return view;
}

} // namespace

NotchStage::NotchStage(
    AppModel& model, const AppModel::Dependencies& dependencies, Requests requests)
    : model_(model)
    , mainQueue_(dependencies.mainQueue)
    , view_(addView(panel_, model, dependencies.clock))
    , animator_(panel_, dependencies.clock, dependencies.mainQueue)
    , raising_(panel_, dependencies.clock, dependencies.mainQueue)
    , hitRefresh_(model, panel_, animator_)
    , screens_(std::move(requests.layOut))
    , layoutPass_({
          .model = model,
          .panel = panel_,
          .animator = animator_,
          .screens = [this] { return screens_.records(); },
          .reduceMotion = reduceMotion,
          .scheduleAnother = std::move(requests.scheduleLayout),
          .refreshHit = [this] { refreshHit(); },
      })
    , decisionWatch_(model, panel_, view_, animator_)
    , sessionLock_([this] { decisionWatch_.setLocked(sessionLock_.isLocked()); })
{
    setAccessibleRole(panel_, QAccessible::Dialog);
    panel_.setWindowTitle(QStringLiteral("QuillMoss Notch"));
    animator_.frameDidChange = [this] { refreshHit(); };
    panel_.surfaceHidden = [this] {
        decisionWatch_.beginAnew();
        raising_.hidden();
    };
    panel_.surfaceUncovered = [this] { decisionWatch_.beginAnew(); };
}

void NotchStage::layOut()
{
    view_.setReducesMotion(reduceMotion());
    layoutPass_.run();
    raising_.setMatter(presentMatter(model_.state()));
    releaseWhenClosed();
}

void NotchStage::releaseWhenClosed()
{
    const bool open = model_.state().isExpanded();
    if (std::exchange(open_, open) == open)
        return;
    release_ = open ? DelayedWork{} : mainQueue_.after(releaseDelay, releaseFontPages);
}

void NotchStage::orderFront()
{
    panel_.orderFront();
    refreshHit();
}

void NotchStage::orderOut()
{
    panel_.orderOut();
    refreshHit();
}

} // namespace notch
