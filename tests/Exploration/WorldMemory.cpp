// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WorldMemory.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace notch {
namespace {

constexpr std::size_t blockSize = 1 << 24; // A page that nobody touches costs nothing.
constexpr std::size_t mostBlocks = 64;
constexpr std::size_t unit = 16; // What a block hands out is a multiple of it, and aligned to it.

thread_local WorldMemory* inside = nullptr;
std::array<std::atomic<WorldMemory*>, mostBlocks> owners{};

std::byte* allBlocks()
{
    static auto* const blocks = static_cast<std::byte*>(::mmap(nullptr, blockSize * mostBlocks,
        PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    return blocks;
}

} // namespace

// At the begin of the block, so that it is saved with it.
struct WorldMemory::Head {
    std::size_t used = sizeof(Head);
    std::array<void*, 128> free{}; // Lists of released pieces, by their size in units.
};

WorldMemory::Inside::Inside(WorldMemory& memory)
{
    inside = &memory;
}

WorldMemory::Inside::~Inside()
{
    inside = nullptr;
}

WorldMemory::WorldMemory()
{
    std::size_t number = 0;
    for (WorldMemory* none = nullptr; !owners.at(number).compare_exchange_strong(none, this);
         none = nullptr)
        ++number;
    block_ = allBlocks() + number * blockSize;
    new (block_) Head;
}

WorldMemory::~WorldMemory()
{
    owners[static_cast<std::size_t>(block_ - allBlocks()) / blockSize] = nullptr;
}

std::vector<std::byte> WorldMemory::saved() const
{
    return {block_, block_ + reinterpret_cast<const Head*>(block_)->used};
}

void WorldMemory::restore(const std::vector<std::byte>& saved)
{
    std::memcpy(block_, saved.data(), saved.size());
}

void* WorldMemory::allocate(std::size_t size)
{
    auto& head = *reinterpret_cast<Head*>(block_);
    const auto units = (size + unit - 1) / unit;
    auto* piece = static_cast<std::byte*>(nullptr);
    if (units < head.free.size() && head.free[units]) {
        piece = static_cast<std::byte*>(head.free[units]);
        std::memcpy(&head.free[units], piece, sizeof(void*));
    } else {
        piece = block_ + head.used + unit;
        head.used += (units + 1) * unit;
        if (head.used > blockSize)
            std::abort();
    }
    std::memcpy(piece - unit, &units, sizeof units);
    return piece;
}

WorldMemory* WorldMemory::owner(const void* pointer)
{
    const auto offset =
        reinterpret_cast<std::uintptr_t>(pointer) - reinterpret_cast<std::uintptr_t>(allBlocks());
    return offset < blockSize * mostBlocks ? owners[offset / blockSize].load() : nullptr;
}

void WorldMemory::release(void* pointer)
{
    auto& head = *reinterpret_cast<Head*>(block_);
    std::size_t units = 0;
    std::memcpy(&units, static_cast<std::byte*>(pointer) - unit, sizeof units);
    if (units == 0 || units >= head.free.size())
        return;
    std::memcpy(pointer, &head.free[units], sizeof(void*));
    head.free[units] = pointer;
}

} // namespace notch

void* operator new(std::size_t size)
{
    auto* const pointer =
        notch::inside ? notch::inside->allocate(size) : std::malloc(size == 0 ? 1 : size);
    if (!pointer)
        throw std::bad_alloc();
    return pointer;
}

void operator delete(void* pointer) noexcept
{
    if (!pointer)
        return;
    if (auto* const owner = notch::WorldMemory::owner(pointer))
        owner->release(pointer);
    else
        std::free(pointer);
}

void operator delete(void* pointer, std::size_t) noexcept
{
    operator delete(pointer);
}
