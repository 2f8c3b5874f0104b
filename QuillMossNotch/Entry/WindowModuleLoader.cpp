// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/WindowModuleLoader.h"

#include "Entry/Terminal.h"
#include "Foundation/Account.h"

#include <dlfcn.h>
#include <string>

namespace notch {
namespace {

// Never a bare file name: dlopen(3) would search the environment's library path for that.
std::string modulePath(const std::string& executable)
{
    return executable.substr(0, executable.rfind('/') + 1) + NOTCH_WINDOW_MODULE_PATH;
}

int complainOfModule(std::string_view reason)
{
    return complain({"QuillMossNotch cannot load its window module: ", reason, "\n"});
}

} // namespace

int runWindowModule(WindowMode mode, const Arguments& arguments)
{
    openStandardStreams();
    const auto executable = executablePath();
    if (!executable)
        return complainOfModule("the program's own file was removed or replaced.");
    // All symbols now, so that an unfit module fails here and not in the middle of its work. It is
    // never closed: toolkits do not survive that.
    void* module = ::dlopen(modulePath(*executable).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
        return complainOfModule(::dlerror());
    auto* entry = reinterpret_cast<WindowModuleEntry*>(::dlsym(module, windowModuleEntryName));
    if (!entry)
        return complainOfModule(::dlerror());
    return entry(mode, arguments.count(), arguments.values());
}

} // namespace notch
