// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/NotchPanel.h"

#include "Geometry/NotchShape.h"
#include "Platform/Display/WindowShape.h"
#include "Platform/Pointer/PointerPosition.h"

#include <QWindow>

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace notch {

namespace {

PixelRect boundsOf(std::span<const PixelRect> pixels)
{
    QRect bounds;
    for (const auto& p : pixels)
        bounds |= QRect(p.x, p.y, p.width, p.height);
    return {bounds.x(), bounds.y(), bounds.width(), bounds.height()};
}

} // namespace

NotchPanel::NotchPanel()
    // Only a window that the window manager does not know stays above a full-screen one and is
    // left where it is.
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
                           | Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint)
    , compositor_("_NET_WM_CM_S0", [this] { applyShape(); })
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips); // It is seldom the active window.
    setAttribute(Qt::WA_QuitOnClose, false);
    setMouseTracking(true);
    winId(); // The native window is there from now on: shape and keyboard need it.
    // A Wayland compositor may give the keyboard to a clicked window of the ordinary type. Set
    // before, the type would be lost when the native window is made.
    setAttribute(Qt::WA_X11NetWmWindowTypeNotification);
    keepPictureInResize(*windowHandle());
    forbidShadow(*windowHandle());
    windowHandle()->installEventFilter(this);
    keyboard_.emplace(*this);
    const auto tell = [](const std::function<void()>& told) {
        if (told)
            told();
    };
    visibility_.emplace(*windowHandle(), WindowVisibility::Changes{
                                             .hidden = [this, tell] { tell(surfaceHidden); },
                                             .uncovered = [this, tell] { tell(surfaceUncovered); },
                                         });
}

NotchPanel::~NotchPanel() = default;

void NotchPanel::setContentView(std::unique_ptr<NotchViewport> viewport)
{
    viewport_ = viewport.release();
    viewport_->setParent(this);
    viewport_->show();
}

void NotchPanel::orderFront()
{
    show();
    raise();
}

void NotchPanel::orderOut()
{
    resignKeyWindow();
    hide();
}

void NotchPanel::setRoom(Room room)
{
    if (std::exchange(room_, room) != room)
        applyFrame(frame_, viewport_->surfaceWidth());
}

void NotchPanel::applyFrame(const Rect& frame, double surfaceWidth)
{
    frame_ = frame;
    viewport_->setSurface(surfaceWidth, frame.height);
    place();
    applyShape();
    viewport_->repaint();
}

// The native window is as tall as the content all the time, and only what is drawn of it and where
// it can be clicked changes. Were the window resized at each step, a compositor would show new
// parts of it before they are drawn, and a closing notch with its lower corners cut off. The
// viewport has the frame's place and width on the screen, however much of it the window shows.
void NotchPanel::place()
{
    const double shown = room_ == Room::frame
                           ? frame_.width
                           : boundedSurfaceWidth(viewport_->surfaceWidth(), frame_.width);
    const double height = std::ceil(std::max(frame_.height, viewport_->naturalHeight()));
    const int left = qRound(frame_.x);
    setGeometry(qRound(frame_.midX() - shown / 2), qRound(frame_.y), qRound(shown),
        static_cast<int>(height));
    viewport_->setGeometry(left - x(), 0, qRound(frame_.width), this->height());
}

double NotchPanel::fitContent(double width, double maxHeight)
{
    return viewport_->fitContent(width, maxHeight);
}

bool NotchPanel::isOnScreen() const
{
    return isVisible();
}

void NotchPanel::bringToFront()
{
    raise();
}

void NotchPanel::watchCover(bool watched)
{
    visibility_->set(watched ? WindowVisibility::Watch::on : WindowVisibility::Watch::off);
}

bool NotchPanel::isKeyWindow() const
{
    return isActiveWindow();
}

void NotchPanel::resignKeyWindow()
{
    keyboard_->giveBack();
}

std::optional<Point> NotchPanel::pointerPosition() const
{
    const auto position = pointerPositionIn(*windowHandle());
    if (!position)
        return std::nullopt;
    return Point{x() + position->x(), y() + position->y()};
}

bool NotchPanel::eventFilter(QObject* object, QEvent* event)
{
    if (object == windowHandle())
        keyboard_->see(*event);
    return QWidget::eventFilter(object, event);
}

void NotchPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    setEnabled(true);
    applyShape();
}

// What cannot be seen cannot be pressed either, by a screen reader's action for one.
void NotchPanel::hideEvent(QHideEvent* event)
{
    setEnabled(false);
    QWidget::hideEvent(event);
}

void NotchPanel::applyShape()
{
    if (!viewport_)
        return;
    auto& window = *windowHandle();
    const auto pixels = pixelsInside(viewport_->silhouette(),
        viewport_->x() + viewport_->silhouetteOffset(), window.devicePixelRatio());
    setInputRegion(window, pixels);
    visibility_->setArea(boundsOf(pixels));
    if (compositor_.isHeld())
        clearVisibleRegion(window);
    else
        setVisibleRegion(window, pixels);
}

} // namespace notch
