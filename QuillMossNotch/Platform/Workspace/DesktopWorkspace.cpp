// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Workspace/DesktopWorkspace.h"

#include "Platform/Display/X11.h"

#include <gio/gdesktopappinfo.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

namespace notch {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Entry = std::unique_ptr<GDesktopAppInfo, Unref>;

// The accessibility page of the desktops that have one under a name of its own.
constexpr std::array accessibilitySettings{
    "gnome-universal-access-panel.desktop",
    "kcm_access.desktop",
    "xfce4-accessibility-settings.desktop",
    "mate-at-properties.desktop",
};

std::string stem(Workspace::HostApplication application)
{
    switch (application) {
    case Workspace::HostApplication::quillmoss:
        return "quillmoss";
    case Workspace::HostApplication::quillmossAI:
        return "quillmoss-ai";
    }
    return {};
}

// Null when there is no such entry, or the program that it names is not there.
Entry entry(const std::string& id)
{
    return Entry(g_desktop_app_info_new(id.c_str()));
}

std::string windowClass(GDesktopAppInfo* entry, const std::string& otherwise)
{
    const char* const named = g_desktop_app_info_get_startup_wm_class(entry);
    return named ? named : otherwise;
}

bool launch(GDesktopAppInfo* entry)
{
    return g_app_info_launch(G_APP_INFO(entry), nullptr, nullptr, nullptr);
}

} // namespace

DesktopWorkspace::DesktopWorkspace(MainQueue& mainQueue)
    : mainQueue_(mainQueue)
    , windows_(x11::connection())
{
}

bool DesktopWorkspace::isInstalled(HostApplication application) const
{
    return entry(stem(application) + ".desktop") != nullptr;
}

void DesktopWorkspace::open(HostApplication application, std::function<void()> failed)
{
    const auto name = stem(application);
    const auto installed = entry(name + ".desktop");
    const auto running =
        installed ? windows_.ofClass(windowClass(installed.get(), name)) : std::nullopt;
    if (running)
        windows_.activate(*running);
    else if (!installed || !launch(installed.get()))
        mainQueue_.post(std::move(failed));
}

void DesktopWorkspace::openAccessibilitySettings()
{
    for (const char* const id : accessibilitySettings)
        if (const auto page = entry(id); page && launch(page.get()))
            return;
}

} // namespace notch
