// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"
#include "Platform/Workspace/ClientWindows.h"
#include "Services/Workspace.h"

namespace notch {

// The host's applications as desktop entries ("quillmoss.desktop", "quillmoss-ai.desktop") in the
// XDG application directories. One that runs is brought to the front, not started again.
class DesktopWorkspace final : public Workspace {
public:
    // Borrowed; must outlive this object, and so must the toolkit's X11 connection.
    explicit DesktopWorkspace(MainQueue& mainQueue);

    bool isInstalled(HostApplication application) const override;
    void open(HostApplication application, std::function<void()> failed) override;
    void openAccessibilitySettings() override;

private:
    MainQueue& mainQueue_;
    ClientWindows windows_;
};

} // namespace notch
