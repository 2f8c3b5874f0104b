// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace notch {

// The coming and going of the desktop's applications. Main thread.
class ApplicationEvents {
public:
    virtual ~ApplicationEvents() = default;
    // `changed` runs on the main thread, never within another operation, each time that any
    // application comes to the front, hides or ends. An empty one ends it.
    virtual void observe(std::function<void()> changed) = 0;
};

} // namespace notch
