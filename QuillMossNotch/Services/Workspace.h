// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/QuillMossProfile.h"

#include <functional>
#include <string_view>

namespace notch {

// The host's installed applications and the desktop's settings. Main thread.
class Workspace {
public:
    // Installed applications of the host are told apart by edition.
    using HostApplication = QuillMossProfile;

    virtual ~Workspace() = default;
    virtual bool isInstalled(HostApplication application) const = 0;
    // Starts it or brings it to the front. `failed` runs on the main thread, later, if that did not
    // work, and never otherwise.
    virtual void open(HostApplication application, std::function<void()> failed) = 0;
    // Shows the desktop's accessibility settings, where there are any.
    virtual void openAccessibilitySettings() = 0;
};

} // namespace notch
