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

// An account whose home is this directory (nss_wrapper(1)). HOME names another, which must not
// matter.
class PrivateAccount {
public:
    explicit PrivateAccount(const std::string& home)
    {
        std::ofstream(accounts_ / "passwd")
            << "user:x:" << ::getuid() << ":0::" << home << ":/bin/sh\n";
        std::ofstream(accounts_ / "group") << "group:x:0:\n";
    }

    // What env(1) needs to run the program in this account.
    std::vector<std::string> command(
        const std::string& path, const std::vector<std::string>& arguments = {}) const
    {
        std::vector<std::string> command{
            "HOME=" + accounts_.path(),
            "NSS_WRAPPER_PASSWD=" + (accounts_ / "passwd"),
            "NSS_WRAPPER_GROUP=" + (accounts_ / "group"),
            std::string("LD_PRELOAD=") + NSS_WRAPPER_PATH,
            // With a sanitizer, the wrapper comes before its runtime and must not load the C
            // library past it.
            "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0",
            "NSS_WRAPPER_DISABLE_DEEPBIND=1",
            path,
        };
        command.insert(command.end(), arguments.begin(), arguments.end());
        return command;
    }

    static constexpr const char* launcher = "/usr/bin/env";

private:
    TemporaryDirectory accounts_;
};

inline ChildProcess::Ending runProgramAtHome(
    const std::string& home, const std::string& path, const std::vector<std::string>& arguments)
{
    return runProgram(PrivateAccount::launcher, PrivateAccount(home).command(path, arguments));
}

} // namespace notch
