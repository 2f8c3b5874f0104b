// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QtCore/qtestsupport_core.h>

#include <functional>

namespace notch {

// A Qt event loop for a test that needs no window. One at a time.
class EventLoop {
public:
    // True when the condition held within ten seconds, which no healthy run comes near.
    bool runUntil(const std::function<bool()>& condition)
    {
        return QTest::qWaitFor(condition, 10'000);
    }
    // Runs what is due now and does not wait for more.
    void runDue() { QCoreApplication::processEvents(); }

private:
    int argc_ = 1;
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
};

} // namespace notch
