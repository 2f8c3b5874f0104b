// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/RunningApplications/RunningApplications.h"
#include "Platform/RunningApplications/XClient.h"
#include "Services/ApplicationEvents.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace notch {

// Tells of the desktop's applications by what the window manager publishes (Extended Window Manager
// Hints 1.5): the active window, the managed windows, and which of them are minimized. An
// application is a process; it ends with its last window. While no window is active, as while our
// own notch has the keyboard, the last one that was counts.
//
// It asks the server for as little as will do, since every event wakes this process: the root's
// properties, and those of the host's windows. Not handled: another application that is minimized
// without having been active is noticed only with the next change.
class ApplicationWatch final : public ApplicationEvents {
public:
    // Borrowed, must outlive it, and used on the main thread only.
    explicit ApplicationWatch(const RunningApplications& applications);

    void observe(std::function<void()> changed) override;

    // The desktop as one look sees it; by process.
    struct Seen {
        std::optional<std::int32_t> active;
        std::set<std::int32_t> running;
        std::set<std::int32_t> hidden;
    };
    // Whether an application came to the front, hid or ended in between.
    static bool tellsOfChange(const Seen& before, const Seen& now);

private:
    void handleEvents();
    bool drain();
    Seen look();
    void watchHost(const std::vector<RunningApplications::Managed>& windows);
    void select(XClient::Window window);

    const RunningApplications& applications_;
    XClient x_;
    std::function<void()> changed_;
    std::set<XClient::Window> watched_;
    Seen seen_;
    std::optional<QSocketNotifier> readable_; // While there is an observer.
};

} // namespace notch
