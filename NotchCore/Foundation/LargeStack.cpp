// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/LargeStack.h"

#include <cstddef>
#include <new>
#include <pthread.h>

namespace notch {
namespace {

constexpr std::size_t stackBytes = 4UL << 20;

struct Task {
    const std::function<void()>& work;
    bool ranOutOfMemory = false;
};

void* run(void* argument)
{
    auto& task = *static_cast<Task*>(argument);
    try {
        task.work();
    } catch (const std::bad_alloc&) {
        task.ranOutOfMemory = true;
    }
    return nullptr;
}

} // namespace

void runOnLargeStack(const std::function<void()>& work)
{
    Task task{work};
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ::pthread_attr_setstacksize(&attributes, stackBytes);
    pthread_t thread{};
    const int failed = ::pthread_create(&thread, &attributes, run, &task);
    ::pthread_attr_destroy(&attributes);
    if (failed != 0)
        throw std::bad_alloc();
    ::pthread_join(thread, nullptr);
    if (task.ranOutOfMemory)
        throw std::bad_alloc();
}

} // namespace notch
