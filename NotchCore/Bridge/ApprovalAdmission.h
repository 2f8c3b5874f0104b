// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Foundation/Time.h"

#include <optional>
#include <string_view>

namespace notch {

// The request in a hook's line, if the server may show it to a person. It lapses at its own time,
// but never later than requestLifetime from now: a hook cannot extend its own wait.
std::optional<ApprovalRequest> admittedRequest(std::string_view line, Date now);

} // namespace notch
