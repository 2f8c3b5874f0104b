// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Change.h"

#include "Entry/Terminal.h"
#include "Foundation/LargeStack.h"
#include "HookConfiguration/HookInstaller.h"
#include "Transport/Streams.h"

#include <exception>
#include <new>
#include <unistd.h>

namespace notch {
namespace {

constexpr std::string_view outOfMemory = "out of memory.\n";

int statusOf(std::string_view failed, const std::function<int()>& change)
{
    try {
        return change();
    } catch (const HookInstaller::Failure& stopped) {
        return complain({failed, stopped.message, "\n"});
    } catch (const std::bad_alloc&) {
        return complain({failed, outOfMemory});
    }
}

} // namespace

int runChange(std::string_view failed, const std::function<int()>& change)
{
    openStandardStreams();
    ignoreWriteSignals();
    // Where memory is so short that an exception cannot even be thrown.
    std::set_terminate([] { ::_exit(complain({"Configuration failed: ", outOfMemory})); });
    int status = 0;
    try {
        // A deep document is copied and compared level by level.
        runOnLargeStack([&] { status = statusOf(failed, change); });
    } catch (const std::bad_alloc&) {
        status = complain({failed, outOfMemory});
    }
    return status;
}

int reportDone(std::initializer_list<std::string_view> pieces)
{
    if (print(pieces))
        return 0;
    complain({"Standard output cannot be written. "});
    return complain(pieces);
}

} // namespace notch
