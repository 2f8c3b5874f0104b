// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"

#include <optional>
#include <string_view>

namespace notch {

// What Json::parseOutline does; apart from it so that only one source compiles the parser library.
std::optional<Json> readJson(std::string_view text, std::size_t levels);

} // namespace notch
