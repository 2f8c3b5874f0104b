// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/DirectoryWatch.h"

#include <array>
#include <cstdint>
#include <sys/inotify.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVE | IN_ATTRIB | IN_DELETE_SELF
                                | IN_MOVE_SELF | IN_ONLYDIR | IN_DONT_FOLLOW;

} // namespace

DirectoryWatch::DirectoryWatch(const std::string& path)
    : descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (descriptor_.valid() && ::inotify_add_watch(descriptor_.get(), path.c_str(), changes) < 0)
        descriptor_ = {};
}

void DirectoryWatch::clear() const
{
    alignas(inotify_event) std::array<char, 4096> events;
    while (::read(descriptor_.get(), events.data(), events.size()) > 0) { }
}

} // namespace notch
