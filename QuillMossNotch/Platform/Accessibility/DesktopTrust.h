// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Accessibility.h"
#include "Native/ChangeSource.h"
#include "Platform/Accessibility/Bus.h"

#include <optional>
#include <string>

namespace notch {

// Whether this desktop's programs show their windows to others: the accessibility bus can be
// reached, and org.a11y.Status says that it is in use. Asking for it switches that on, and the
// desktop keeps it. One thread at a time; no program of the desktop is ever waited for but the
// launcher of that bus.
class DesktopTrust final : public AccessibilityTrust, public ChangeSource {
public:
    // `patience`: how long the launcher may take.
    explicit DesktopTrust(Seconds patience)
        : patience_(patience)
    {
    }
    DesktopTrust(const DesktopTrust&) = delete;
    DesktopTrust& operator=(const DesktopTrust&) = delete;

    // The session has such a bus, or can start one.
    static bool isAvailable();

    bool isProcessTrusted() override;
    void requestTrust() override;
    // Of the accessibility bus.
    std::optional<std::string> address();
    // Of isProcessTrusted(), from the first call on.
    int changesDescriptor() override;
    bool takeChanges() override;

private:
    sd_bus* session();
    void watch();

    Seconds patience_;
    bool isWatching_ = false;
    bool hasChanged_ = false;
    bus::Connection session_;
};

} // namespace notch
