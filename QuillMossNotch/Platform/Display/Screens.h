// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/PanelGeometry.h"

#include <QObject>

#include <functional>
#include <vector>

class QScreen;

namespace notch {

// The desktop's screens, the primary one first. Displays of this platform have no notch of their
// own, so no record has a top inset. Main thread.
class Screens {
public:
    // `changed` runs after a screen has come, gone, moved or changed its size, later than the
    // change itself.
    explicit Screens(std::function<void()> changed);

    std::vector<ScreenRecord> records() const;

private:
    void watch(QScreen* screen);

    std::function<void()> changed_;
    QObject context_; // Its destruction ends the connections.
};

} // namespace notch
