// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/RunningApplications/HostIdentity.h"

#include <gio/gdesktopappinfo.h>

#include <memory>

namespace notch {

std::vector<std::string> hostWindowClasses()
{
    struct Unref {
        void operator()(GDesktopAppInfo* entry) const { g_object_unref(entry); }
    };
    std::vector<std::string> classes;
    for (const std::string name : {"quillmoss", "quillmoss-ai"}) {
        const std::unique_ptr<GDesktopAppInfo, Unref> entry(
            g_desktop_app_info_new((name + ".desktop").c_str()));
        const char* const said =
            entry ? g_desktop_app_info_get_startup_wm_class(entry.get()) : nullptr;
        classes.push_back(said ? said : name);
    }
    return classes;
}

} // namespace notch
