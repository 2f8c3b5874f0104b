// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Workspace/DesktopWorkspace.h"

#include "Platform/Display/X11.h"
#include "Platform/Workspace/BusActivation.h"

#include <gio/gdesktopappinfo.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

// Also one whose name has a domain before it, as D-Bus activation demands.
Entry entryOf(const std::string& stem)
{
    if (auto plain = entry(stem + ".desktop"))
        return plain;
    Entry found;
    GList* const all = g_app_info_get_all();
    for (GList* at = all; at && !found; at = at->next) {
        const char* const id = g_app_info_get_id(static_cast<GAppInfo*>(at->data));
        if (id && std::string_view(id).ends_with('.' + stem + ".desktop"))
            found.reset(static_cast<GDesktopAppInfo*>(g_object_ref(at->data)));
    }
    g_list_free_full(all, g_object_unref);
    return found;
}

// The name that the bus starts it by; nothing for most.
std::optional<std::string> busName(GDesktopAppInfo* entry)
{
    std::string name = g_app_info_get_id(G_APP_INFO(entry));
    name.resize(name.size() - std::string_view(".desktop").size());
    const bool known =
        g_desktop_app_info_get_boolean(entry, "DBusActivatable") && g_dbus_is_name(name.c_str());
    return known ? std::optional(name) : std::nullopt;
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

// Not by the bus, as GIO would launch it: that has failed.
bool launchByCommand(GDesktopAppInfo* entry)
{
    const char* const command = g_app_info_get_commandline(G_APP_INFO(entry));
    const std::unique_ptr<GAppInfo, Unref> plain(
        command
            ? g_app_info_create_from_commandline(command, nullptr, G_APP_INFO_CREATE_NONE, nullptr)
            : nullptr);
    return plain && g_app_info_launch(plain.get(), nullptr, nullptr, nullptr);
}

} // namespace

DesktopWorkspace::DesktopWorkspace(MainQueue& mainQueue)
    : mainQueue_(mainQueue)
    , windows_(x11::connection())
{
}

bool DesktopWorkspace::isInstalled(HostApplication application) const
{
    return entryOf(stem(application)) != nullptr;
}

void DesktopWorkspace::open(HostApplication application, std::function<void()> failed)
{
    const auto name = stem(application);
    const std::shared_ptr<GDesktopAppInfo> installed = entryOf(name);
    const auto running =
        installed ? windows_.ofClass(windowClass(installed.get(), name)) : std::nullopt;
    const auto onBus = installed ? busName(installed.get()) : std::nullopt;
    if (running)
        windows_.activate(*running);
    else if (onBus)
        activateOnBus(context_, QString::fromStdString(*onBus), [this, installed, failed] {
            if (!launchByCommand(installed.get()))
                mainQueue_.post(failed);
        });
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
