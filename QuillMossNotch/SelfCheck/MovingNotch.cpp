// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SelfCheck/MovingNotch.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <memory>
#include <sstream>

namespace notch {

OffscreenPanel::OffscreenPanel(AppModel& model, const Clock& clock)
    : view_(new NotchView(model, clock))
    , viewport_(std::unique_ptr<QWidget>(view_), [this](double width, double maxHeight) -> double {
        view_->refresh();
        return view_->fit(
            static_cast<int>(std::lround(width)), static_cast<int>(std::floor(maxHeight)));
    })
{
    viewport_.show();
}

void OffscreenPanel::applyFrame(const Rect& frame, double surfaceWidth)
{
    FakeSurface::applyFrame(frame, surfaceWidth);
    const double height = std::ceil(std::max(frame.height, viewport_.naturalHeight()));
    viewport_.resize(qRound(frame.width), static_cast<int>(height));
    viewport_.setSurface(surfaceWidth, frame.height);
    if (frameApplied)
        frameApplied();
}

double OffscreenPanel::fitContent(double width, double maxHeight)
{
    const double natural = viewport_.fitContent(width, maxHeight);
    return contentHeight.value_or(natural);
}

MovingNotch::MovingNotch()
{
    model.setWidths(400, 200); // Of no screen: the first pass finds out.
    model.subscribe([this] { scheduleLayout(); });
    animator.frameDidChange = [this] { hit_.run(); };
    addOperations();
}

void MovingNotch::addOperations()
{
    operations_.insert({
        {"layOut", [this] { layout_.run(); }},
        {"noScreen", [this] { screens_.clear(); }},
        {"secondScreen",
            [this] {
                screens_.push_back({.frame = {1280, 100, 400, 600}, .topInset = 30});
            }},
        {"firstScreen", [this] { screens_.resize(1); }},
        {"reduced", [this] { reduced_ = true; }},
        {"orderOut", [this] { panel.onScreen = false; }},
        {"content", [this] { panel.contentHeight = std::stod(next()); }},
        {"point",
            [this] {
                panel.pointer = Point{next<double>(), next<double>()};
            }},
        {"otherDesktop", [this] { panel.pointer.reset(); }},
        {"hit", [this] { hit_.run(); }},
        {"focus", [this] { panel.key = true; }},
        {"widths",
            [this] {
                std::ostringstream text;
                text << state().notchHeight << ' ' << state().panelWidth << ' '
                     << state().compactWidth;
                answer(text.str());
            }},
        {"clickOn", [this] { click(next()); }},
        {"pressOn", [this] { point(next(), true); }},
        {"releaseOn", [this] { point(next(), false); }},
        {"calls",
            [this] {
                for (const auto& call : fakes.takeCalls())
                    answer(call);
            }},
    });
}

bool MovingNotch::isArmed(const char* button)
{
    const auto* found = find<QAbstractButton>(button);
    return found && found->isVisible() && found->isEnabled();
}

bool MovingNotch::showsWhole(const char* section)
{
    const auto* found = find(section);
    if (!found || !found->isVisible())
        return false;
    auto& viewport = panel.viewport();
    const auto body = NotchShape::shoulder;
    const QRectF room(viewport.silhouetteOffset() + body, 0, viewport.surfaceWidth() - 2 * body,
        panel.current.height);
    return std::ranges::all_of(found->findChildren<QWidget*>(), [&](const QWidget* part) {
        const QRectF place(part->mapTo(&viewport, QPoint(0, 0)), QSizeF(part->size()));
        const int needed = part->hasHeightForWidth() ? part->heightForWidth(part->width())
                                                     : part->minimumSizeHint().height();
        return !part->isVisible() || (room.contains(place) && part->height() >= needed);
    });
}

// As often as it changes in one turn of the main queue, the notch is laid out once.
void MovingNotch::scheduleLayout()
{
    constexpr int endless = 10'000;
    if (layoutScheduled_ || ++passes_ > endless)
        return;
    layoutScheduled_ = true;
    fakes.time.post([this] {
        layoutScheduled_ = false;
        layout_.run();
    });
}

std::string MovingNotch::stateText()
{
    std::ostringstream text;
    const auto& frame = panel.current;
    if (panel.applied.empty()) {
        text << "never";
    } else if (animator.isAnimating()) {
        text << "…";
    } else {
        text << frame.x << ',' << frame.y << ' ' << frame.width << 'x';
        if (frame.height == panel.viewport().naturalHeight()
            && panel.applied.back().second == frame.width)
            text << "all";
        else
            text << frame.height;
        text << '/' << panel.applied.back().second;
    }
    text << (panel.room == NotchSurface::Room::surface ? " narrow" : "")
         << (state().isExpanded() ? " expanded" : "") << (animator.isAnimating() ? " moving" : "")
         << (interaction().pointerInside() ? " inside" : "") << (panel.key ? " key" : "");
    return text.str();
}

void MovingNotch::click(const std::string& name)
{
    if (auto* const button = find<QAbstractButton>(name.c_str()))
        button->click();
}

void MovingNotch::point(const std::string& name, bool down)
{
    auto* const widget = find(name.c_str());
    if (!widget)
        return;
    const QPointF place = widget->rect().center();
    QMouseEvent event(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, place,
        widget->mapToGlobal(place), Qt::LeftButton, down ? Qt::LeftButton : Qt::NoButton,
        Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace notch
