// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/DecisionWatch.h"

#include "Geometry/PanelGeometry.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>
#include <array>
#include <utility>

namespace notch {

namespace {

std::array<Point, 4> corners(const Rect& rect)
{
    constexpr double within = 0.5; // The right and the bottom edge are outside.
    const double right = rect.x + rect.width - within;
    const double bottom = rect.y + rect.height - within;
    return {Point{rect.x, rect.y}, {right, rect.y}, {rect.x, bottom}, {right, bottom}};
}

} // namespace

DecisionWatch::DecisionWatch(AppModel& model, NotchPanel& panel, const NotchView& view,
    const VerticalRevealAnimator& animator)
    : model_(model)
    , panel_(panel)
    , view_(view)
    , animator_(animator)
{
    panel_.installEventFilter(this);
    panel_.viewport().installEventFilter(this);
    model_.setDisplay(this);
}

DecisionWatch::~DecisionWatch()
{
    model_.setDisplay(nullptr);
}

void DecisionWatch::beginAnew()
{
    forget();
    panel_.viewport().update(); // What the server kept of it would be no new frame.
}

void DecisionWatch::setLocked(bool locked)
{
    locked_ = locked;
    beginAnew();
}

std::optional<ShownDecision> DecisionWatch::onShow() const
{
    return shown_ && inSight() == shown_ ? shown_ : std::nullopt;
}

std::optional<InputTime> DecisionWatch::inputTime() const
{
    const auto now = serverClock_.now();
    return now ? std::optional(InputTime{*now}) : std::nullopt;
}

Seconds DecisionWatch::doubleClickInterval() const
{
    return Seconds{QGuiApplication::styleHints()->mouseDoubleClickInterval() / 1000.0};
}

bool DecisionWatch::eventFilter(QObject* object, QEvent* event)
{
    if (object == &panel_ && event->type() == QEvent::Hide)
        forget();
    else if (object != &panel_ && event->type() == QEvent::Paint)
        drawing();
    return false;
}

// As it would be seen if it were drawn now.
std::optional<ShownDecision> DecisionWatch::inSight() const
{
    if (locked_ || !panel_.isOnScreen() || !panel_.windowHandle()->isExposed()
        || panel_.isCovered())
        return std::nullopt;
    const auto decision = view_.decision();
    const auto isUncovered = [this](Point point) {
        return hitsSurface(point, panel_.frame(), animator_.surfaceWidth());
    };
    const bool uncovered = decision && std::ranges::all_of(decision->buttons, [&](const Rect& it) {
        return std::ranges::all_of(corners(it), isUncovered);
    });
    return uncovered ? decision : std::nullopt;
}

// What a frame shows is settled when its drawing begins; it has been handed over when the toolkit
// comes back to its event loop.
void DecisionWatch::drawing()
{
    drawn_ = inSight();
    if (!std::exchange(drawing_, true))
        QMetaObject::invokeMethod(this, &DecisionWatch::frameDone, Qt::QueuedConnection);
}

void DecisionWatch::frameDone()
{
    drawing_ = false;
    if (drawn_ && drawn_ != shown_)
        serverClock_.now(); // Until the server has done it.
    shown_ = drawn_;
    model_.displayChanged();
}

void DecisionWatch::forget()
{
    drawn_.reset();
    shown_.reset();
    model_.displayChanged();
}

} // namespace notch
