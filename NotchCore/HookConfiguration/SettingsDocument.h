// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"

#include <optional>
#include <string>

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

// Not null once the document is validated.
const Json::Array& hooksOf(const Json& group);

} // namespace notch
