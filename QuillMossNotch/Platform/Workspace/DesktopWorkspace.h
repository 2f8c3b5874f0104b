// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"
#include "Platform/Workspace/ClientWindows.h"
#include "Services/Workspace.h"

#include <QObject>

namespace notch {

// The host's applications as desktop entries ("quillmoss.desktop", "quillmoss-ai.desktop", or these
// after a domain) in the XDG application directories. One that runs is brought to the front: by the
// window manager where it knows its window, else by the bus if the entry is DBusActivatable. Any
// other native application of a Wayland session cannot be found: it is started again, and it is
// its own second start that brings it to the front.
class DesktopWorkspace final : public Workspace {
public:
    // Borrowed; must outlive this object, and so must the toolkit's X11 connection.
    explicit DesktopWorkspace(MainQueue& mainQueue);

    bool isInstalled(HostApplication application) const override;
    void open(HostApplication application, std::function<void()> failed) override;
    void openAccessibilitySettings() override;

private:
    MainQueue& mainQueue_;
    QObject context_; // Ends what the bus has not answered.
    ClientWindows windows_;
};

} // namespace notch
