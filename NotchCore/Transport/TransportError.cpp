// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/TransportError.h"

#include <cstring>

namespace notch {

std::string TransportError::describe() const
{
    switch (code) {
    case Code::unsafePath:
        return "Unsafe bridge directory or socket ownership/type/permissions.";
    case Code::alreadyRunning:
        return "An approval bridge is already running.";
    case Code::system:
        break;
    }
    return std::strerror(systemErrno);
}

} // namespace notch
