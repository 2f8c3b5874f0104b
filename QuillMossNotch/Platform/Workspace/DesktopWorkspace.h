// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/Workspace.h"
#include "Foundation/MainQueue.h"
#include "Platform/Workspace/ClientWindows.h"

namespace notch {

// The host's applications as desktop entries ("quillmoss.desktop", "quillmoss-ai.desktop") in the
// XDG application directories. One that runs is brought to the front, not started again.
class DesktopWorkspace final : public Workspace {
public:
    // Both are borrowed and must outlive this object.
    DesktopWorkspace(MainQueue& mainQueue, xcb_connection_t* connection);

    bool isInstalled(HostApplication application) const override;
    void open(HostApplication application, std::function<void()> failed) override;
    void openAccessibilitySettings() override;

private:
    MainQueue& mainQueue_;
    ClientWindows windows_;
};

} // namespace notch
