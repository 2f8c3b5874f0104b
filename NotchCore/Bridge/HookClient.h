// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Bridge/Decision.h"
#include "Transport/SocketPath.h"

#include <optional>
#include <string_view>
#include <unistd.h>

namespace notch {

// The whole logic of the hook process that the host runs for a permission request. It relays a
// decision that a person took in the notch and takes none itself: whatever goes wrong, it prints
// nothing, and the host's own permission flow goes on.
class HookClient {
public:
    explicit HookClient(SocketDirectory directory = SocketDirectory::ofUser());

    // Reads the host's JSON object to its end, exchanges it and prints at most one line. The
    // descriptors are borrowed. Ignores SIGPIPE and SIGXFSZ in the whole process.
    void run(std::string_view source, int input = STDIN_FILENO, int output = STDOUT_FILENO) const;

    // Waits for the answer of the resident application; nothing when there is no usable one.
    std::optional<Decision> exchange(const ApprovalRequest& request) const;

private:
    SocketPath socket_;
};

} // namespace notch
