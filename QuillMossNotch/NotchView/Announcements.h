// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Foundation/Time.h"

#include <optional>
#include <string>

namespace notch {

// What a screen reader is told of the open notch, each thing once: the request on show, what became
// of it, a reminder; and, once for a request, that its buttons can be used.
class Announcements {
public:
    // What is to be said now, if anything.
    std::optional<std::string> next(const AppModelState& state, Date now);

private:
    std::string matter_; // What was told last, by a name that differs for each.
    bool armedTold_ = false; // The arming of that matter.
};

} // namespace notch
