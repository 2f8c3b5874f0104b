// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/Screens.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace notch {

Screens::Screens(std::function<void()> changed)
    : changed_(std::move(changed))
{
    // Queued: the list of screens must be the new one when `changed` reads it.
    const auto tell = [this] { changed_(); };
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_,
        [this](QScreen* added) { watch(added); });
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_, tell, Qt::QueuedConnection);
    QObject::connect(
        qGuiApp, &QGuiApplication::screenRemoved, &context_, tell, Qt::QueuedConnection);
    QObject::connect(
        qGuiApp, &QGuiApplication::primaryScreenChanged, &context_, tell, Qt::QueuedConnection);
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
}

void Screens::watch(QScreen* screen)
{
    QObject::connect(
        screen, &QScreen::geometryChanged, &context_, [this] { changed_(); }, Qt::QueuedConnection);
}

std::vector<ScreenRecord> Screens::records() const
{
    std::vector<ScreenRecord> records;
    for (const auto* screen : QGuiApplication::screens()) {
        const QRectF frame = screen->geometry();
        records.push_back({.frame = {frame.x(), frame.y(), frame.width(), frame.height()}});
    }
    return records;
}

} // namespace notch
