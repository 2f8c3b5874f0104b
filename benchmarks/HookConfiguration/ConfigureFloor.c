// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The system calls of one --configure --apply on an existing file and nothing else: what the
// process would cost if computing were free. Linked statically. Usage: ConfigureFloor DIRECTORY, an
// absolute path of the directory that holds settings.json.

#define _GNU_SOURCE
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

static char text[16384];

static int walk(const char* path)
{
    char copy[4096];
    snprintf(copy, sizeof copy, "%s", path);
    int directory = open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (char* piece = strtok(copy, "/"); piece; piece = strtok(NULL, "/")) {
        int next = openat(directory, piece, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        close(directory);
        directory = next;
    }
    return directory;
}

static ssize_t readFile(int directory)
{
    struct stat status;
    int file = openat(directory, "settings.json", O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    fstat(file, &status);
    ssize_t size = read(file, text, sizeof text);
    char end;
    ssize_t rest = read(file, &end, 1);
    fstat(file, &status);
    close(file);
    return rest == 0 ? size : -1;
}

static int writeFile(int directory, const char* name, size_t size)
{
    int file = openat(directory, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    return write(file, text, size) == (ssize_t)size && fsync(file) == 0 ? file : -1;
}

int main(int count, char** arguments)
{
    struct stat status;
    char name[64];
    if (count != 2)
        return 1;
    int shown = walk(arguments[1]);
    if (readFile(shown) < 0 || write(STDOUT_FILENO, text, 1) != 1)
        return 1;
    close(shown);

    int directory = walk(arguments[1]);
    int lock = openat(directory, ".quillmoss-notch-v1.lock",
        O_RDWR | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, 0600);
    fstat(lock, &status);
    flock(lock, LOCK_EX | LOCK_NB);
    ssize_t size = readFile(directory);
    mkdirat(directory, ".quillmoss-notch-backups", 0700);
    int backups = openat(
        directory, ".quillmoss-notch-backups", O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    fstat(backups, &status);
    snprintf(name, sizeof name, "settings.json.%d.bak", (int)getpid());
    int backup = size < 0 ? -1 : writeFile(backups, name, (size_t)size);
    fsync(backups);
    close(backup);
    close(backups);
    int temporary = writeFile(directory, ".settings.json.tmp", (size_t)size);
    int again = walk(arguments[1]);
    fstat(directory, &status);
    fstat(again, &status);
    readFile(directory);
    close(again);
    int failed = backup < 0 || temporary < 0
              || renameat(directory, ".settings.json.tmp", directory, "settings.json") != 0;
    fsync(directory);
    close(temporary);
    unlinkat(directory, ".settings.json.tmp", 0);
    flock(lock, LOCK_UN);
    return failed || write(STDOUT_FILENO, text, 1) != 1;
}
