// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>
#include <sys/prctl.h>
#include <unistd.h>

namespace notch {

// While it lives, a test that runs as root has the rights of a user whom the modes of files bind.
class OrdinaryUser {
public:
    OrdinaryUser() { become(wasRoot_ ? nobody : ::geteuid()); }
    ~OrdinaryUser() { become(wasRoot_ ? 0 : ::geteuid()); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t nobody = 65534;

    static void become(uid_t user)
    {
        if (::seteuid(user) != 0)
            std::abort(); // A test with other rights than it names would prove nothing.
        ::prctl(PR_SET_DUMPABLE, 1); // Otherwise /proc/self is root's.
    }

    const bool wasRoot_ = ::geteuid() == 0;
};

} // namespace notch
