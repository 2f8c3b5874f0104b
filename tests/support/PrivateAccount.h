// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace notch {

// False where the account database cannot be wrapped; nothing may be run then, since it would work
// in the real home.
inline bool canWrapAccount()
{
    return ::access(NSS_WRAPPER_PATH, R_OK) == 0;
}

// Runs the program in an account whose home is this directory (nss_wrapper(1)). HOME names another,
// which must not matter.
inline ChildProcess::Ending runProgramAtHome(
    const std::string& home, const std::string& path, const std::vector<std::string>& arguments)
{
    const TemporaryDirectory accounts;
    std::ofstream(accounts / "passwd") << "user:x:" << ::getuid() << ":0::" << home << ":/bin/sh\n";
    std::ofstream(accounts / "group") << "group:x:0:\n";
    std::vector<std::string> command{
        "HOME=" + accounts.path(),
        "NSS_WRAPPER_PASSWD=" + (accounts / "passwd"),
        "NSS_WRAPPER_GROUP=" + (accounts / "group"),
        std::string("LD_PRELOAD=") + NSS_WRAPPER_PATH,
        // The wrapper then stands before the sanitizer's runtime, which is all right.
        "ASAN_OPTIONS=verify_asan_link_order=0",
        path,
    };
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProgram("/usr/bin/env", command);
}

} // namespace notch
