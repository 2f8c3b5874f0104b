// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/ChangeSource.h"
#include "Native/HostApplications.h"
#include "Native/Tree/ScreenRect.h"
#include "Platform/RunningApplications/XClient.h"

#include <cstdint>
#include <string>
#include <vector>

namespace notch {

// The host's processes, told by their managed windows (Extended Window Manager Hints 1.5). A
// process is the host's when one of its windows has the host's class or GTK application id; which
// process that is, the X server knows. Has a connection of its own, and so may be used on any one
// thread. Without an X server or a window manager there are none.
class RunningApplications final : public HostApplications, public ChangeSource {
public:
    // `classes`: names of the host's windows, in whatever letter case. An empty display means
    // $DISPLAY.
    explicit RunningApplications(std::vector<std::string> classes, const std::string& display = {});

    bool isConnected() const { return x_.isConnected(); }
    std::vector<HostApplication> running() const override;
    // The list of windows and the active window, from the first call on.
    int changesDescriptor() override;
    bool takeChanges() override;

    // Every managed window, of whatever process.
    struct Managed {
        XClient::Window window = XCB_WINDOW_NONE;
        std::int32_t pid = 0;
        bool isMinimized = false;
        bool isOfHost = false;
    };
    std::vector<Managed> managed() const;
    // The active window's process, then those of the windows that it belongs to.
    std::vector<std::int32_t> activePids() const;

    // A managed window as the window manager has it on the screen.
    struct Window {
        std::string title;
        ScreenRect frame; // Without its decoration.
        bool isMinimized = false;
    };
    // All managed windows of a process, of whatever class.
    std::vector<Window> windows(std::int32_t pid) const;

    // Asks the window manager to raise a window of the process and give it the keyboard. False if
    // the process has none.
    bool activate(std::int32_t pid) const;

private:
    bool isOfHost(const std::string& windowClass, const std::string& applicationID) const;
    Window describe(const Managed& managed) const;

    XClient x_;
    std::vector<std::string> classes_;
};

} // namespace notch
