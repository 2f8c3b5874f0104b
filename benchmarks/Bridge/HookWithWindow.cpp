// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What a hook would cost if the program linked what its window needs.

#include "Bridge/HookClient.h"

#include <dlfcn.h>

int main()
{
    if (!::dlopen(WINDOW_MODULE_FILE, RTLD_NOW | RTLD_LOCAL))
        return 1;
    notch::HookClient().run("quillmoss");
    return 0;
}
