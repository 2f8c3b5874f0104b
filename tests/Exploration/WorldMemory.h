// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

namespace notch {

// A block of memory for one world of objects, which is saved and brought back as bytes: a world
// that holds nothing from outside the block is then what it was. While a thread is inside, all that
// it allocates comes from the block. Nothing in the block may be freed outside, or the other way
// round.
class WorldMemory {
public:
    class Inside {
    public:
        explicit Inside(WorldMemory& memory);
        ~Inside();
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;
    };

    WorldMemory();
    ~WorldMemory();
    WorldMemory(const WorldMemory&) = delete;
    WorldMemory& operator=(const WorldMemory&) = delete;

    std::vector<std::byte> saved() const;
    void restore(const std::vector<std::byte>& saved);

    void* allocate(std::size_t size);
    // Null when `pointer` is not from a block, and is to be freed as usual.
    static WorldMemory* owner(const void* pointer);
    void release(void* pointer);

private:
    struct Head;

    std::byte* block_;
};

} // namespace notch
