// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UUID.h"

#include <utility>

namespace notch {

// Which run of the monitor this is. Work remembers the epoch that it began in, and ends at its next
// check when that is over: each start and each stop begins a new one.
class NativeMonitorLifecycle {
public:
    bool running() const { return running_; }
    const UUID& epoch() const { return epoch_; }

    UUID start() { return begin(true); }
    UUID stop() { return begin(false); }
    bool isCurrent(const UUID& epoch) const { return running_ && epoch_ == epoch; }

private:
    UUID begin(bool running)
    {
        running_ = running;
        epoch_ = UUID::random();
        return epoch_;
    }

    bool running_ = false;
    UUID epoch_ = UUID::random();
};

} // namespace notch
