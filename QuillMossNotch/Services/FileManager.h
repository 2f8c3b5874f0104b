// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace notch {

// The desktop's file manager. Main thread.
class FileManager {
public:
    virtual ~FileManager() = default;
    // Opens the folder of this file with the file selected, or at least the folder. Returns at
    // once; where there is no file manager, nothing happens.
    virtual void showItem(const std::string& path) = 0;
};

} // namespace notch
