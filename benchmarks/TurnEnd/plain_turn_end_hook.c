/* SPDX-FileCopyrightText: QuillMossNotch contributors */
/* SPDX-License-Identifier: MIT */

/* The floor under the turn-end hook: a static program that makes the same system calls in the same
 * order, and nothing else. It understands nothing and sends a line that is always the same. */

#define _GNU_SOURCE

#include <poll.h>
#include <stdio.h>
#include <string.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

static const char line[] = "{\"id\":\"00000000-0000-4000-8000-000000000000\",\"kind\":\"started\","
                           "\"observedAt\":0.5,\"sessionID\":\"s\"}\n";

static int read_input(void)
{
    char chunk[8192];
    for (;;) {
        struct pollfd input = {STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, 300) <= 0)
            return 0;
        const ssize_t count = read(STDIN_FILENO, chunk, sizeof chunk);
        if (count <= 0)
            return count == 0;
    }
}

static int send_line(void)
{
    struct stat status;
    struct sockaddr_un address = {.sun_family = AF_UNIX};
    snprintf(address.sun_path, sizeof address.sun_path, "/tmp/quillmoss-notch-%u", getuid());
    if (lstat(address.sun_path, &status) != 0)
        return 0;
    strcat(address.sun_path, "/completion.sock");
    if (lstat(address.sun_path, &status) != 0)
        return 0;
    const int peer = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (connect(peer, (const struct sockaddr*)&address, sizeof address) != 0)
        return 0;
    struct ucred user;
    socklen_t size = sizeof user;
    if (getsockopt(peer, SOL_SOCKET, SO_PEERCRED, &user, &size) != 0 || user.uid != getuid())
        return 0;
    struct pollfd output = {peer, POLLOUT, 0};
    if (poll(&output, 1, 120) <= 0)
        return 0;
    return send(peer, line, sizeof line - 1, MSG_NOSIGNAL) > 0 && close(peer) == 0;
}

int main(void)
{
    char random[16];
    if (!read_input() || getrandom(random, sizeof random, 0) != sizeof random)
        return 0;
    send_line();
    return 0;
}
