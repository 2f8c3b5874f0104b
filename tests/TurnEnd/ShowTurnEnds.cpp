// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// ShowTurnEnds [DIRECTORY]: takes the resident application's place on the turn-end channel and
// prints what it accepts, a line each, until SIGINT or SIGTERM ends it.

#include "TurnEnd/CompletionServer.h"
#include "support/CompletionEvents.h"

#include <csignal>
#include <cstdio>

int main(int argc, char** argv)
{
    ::setlinebuf(stdout);
    sigset_t ends{};
    ::sigemptyset(&ends);
    ::sigaddset(&ends, SIGINT);
    ::sigaddset(&ends, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &ends, nullptr); // Before the server has threads, for all of them.

    notch::CompletionServer server(
        argc > 1 ? notch::SocketDirectory(argv[1]) : notch::SocketDirectory::ofUser());
    const auto error = server.start(
        [](const notch::CompletionEvent& event) { std::puts(notch::printed(event).c_str()); });
    if (error) {
        std::fprintf(stderr, "%s\n", error->describe().c_str());
        return 1;
    }
    std::puts("Waiting for turn starts and ends. Ctrl-C stops.");
    int signal = 0;
    ::sigwait(&ends, &signal);
    return 0;
}
