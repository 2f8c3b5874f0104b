// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The host's settings.json as a document: an object whose optional key "hooks" maps an event's name
// to an array of groups, each with an array of hooks. Everything else in it is the host's affair
// and is kept by value. Failures are HookInstaller::Failure.

// The document; an empty one for a file that does not exist. An operation works on no file whose
// hooks the host might not understand, so those of every event and every owner are checked.
Json::Object validateSettings(const std::optional<std::string>& bytes);

// That check alone, for a document without bytes.
void validateHooks(const Json::Object& root);

// What is written to the file.
std::string settingsText(const Json& document);
// The same in pieces: the uniform layout can make the text of a deep document very long.
void writeSettings(const Json& document, const std::function<void(std::string_view)>& write);

// Not null once the document is validated.
const Json::Array& hooksOf(const Json& group);

} // namespace notch
