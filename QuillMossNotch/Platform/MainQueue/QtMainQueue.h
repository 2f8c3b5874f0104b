// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"

#include <QObject>

namespace notch {

// The main queue on Qt's event loop. Made on the main thread once there is a QCoreApplication.
// Work that has not run when the queue is destroyed never runs.
class QtMainQueue final : public MainQueue {
public:
    void post(Work work) override;
    DelayedWork after(Seconds delay, Work work) override;

private:
    QObject context_; // Receives every post, owns every timer.
};

} // namespace notch
