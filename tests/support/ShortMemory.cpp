// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/ShortMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace notch {
namespace {

std::atomic<long> left = -1; // Allocations until one fails; negative: none does.
thread_local bool exempt = false;

bool fails()
{
    return !exempt && left >= 0 && left-- == 0;
}

} // namespace

ShortMemory::ShortMemory(std::size_t after)
{
    exemptFromShortMemory();
    left = static_cast<long>(after);
}

ShortMemory::~ShortMemory()
{
    left = -1;
}

bool ShortMemory::hasFailed() const
{
    return left < 0;
}

void exemptFromShortMemory()
{
    exempt = true;
}

} // namespace notch

// These take the place of the C++ library's for everything that this program links.
void* operator new(std::size_t size)
{
    auto* const memory = notch::fails() ? nullptr : std::malloc(size);
    return memory ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
