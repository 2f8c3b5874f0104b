// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "TurnEnd/CompletionEvent.h"

#include <cstdint>

namespace notch {

// A turn that ended normally while the host was in the background.
struct CompletionReminder {
    UUID token; // Fresh for every reminder; names it in every later operation.
    CompletionEvent event; // The end.
    std::int32_t pid = 0; // The host process at that time.
    Date receivedAt;

    bool operator==(const CompletionReminder&) const = default;
};

} // namespace notch
