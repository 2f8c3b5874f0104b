// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"

#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace notch {

// SIGTERM and SIGINT as calls on the main thread. One object at a time.
class TerminationSignals {
public:
    // `arrived` runs once for each signal that came, from the event loop.
    explicit TerminationSignals(std::function<void()> arrived);
    // Gives the signals their usual effect back.
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    void deliver();

    UniqueFd counter_;
    std::optional<QSocketNotifier> notifier_;
    std::function<void()> arrived_;
};

} // namespace notch
