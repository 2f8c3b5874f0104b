// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Services/FileManager.h"

namespace notch {

// The file manager that answers on the session bus to the name that file managers share; where none
// does, the program that opens folders.
class DesktopFileManager final : public FileManager {
public:
    void showItem(const std::string& path) override;
};

} // namespace notch
