// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/MainQueue/QtMainQueue.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace notch {

void QtMainQueue::post(Work work)
{
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

DelayedWork QtMainQueue::after(Seconds delay, Work work)
{
    using std::chrono::milliseconds;
    const auto wait = std::max(std::chrono::ceil<milliseconds>(delay), milliseconds::zero());
    const QPointer timer = new QTimer(&context_);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer); // A coarse one may fire 5 % early.
    // Later: the work may cancel its own handle, which must not take the timer from under it.
    QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    QObject::connect(timer, &QTimer::timeout, timer, std::move(work));
    timer->start(wait);
    return DelayedWork([timer] {
        if (!timer)
            return;
        timer->stop();
        timer->deleteLater();
    });
}

} // namespace notch
