// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

#include <string>
#include <system_error>

namespace notch {

// A picture as a PNG file. The error says why there is none, or not all of it.

// Under a name that nothing has, not even a symbolic link that leads nowhere. The file comes into
// being whole or not at all, whatever ends the process.
std::error_code createPicture(const QImage& picture, const std::string& path);
// In the place of what the path leads to.
std::error_code replacePicture(const QImage& picture, const std::string& path);

} // namespace notch
