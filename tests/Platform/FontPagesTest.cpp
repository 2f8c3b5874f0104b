// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Toolkit/FontPages.h"

#include "Foundation/UniqueFd.h"
#include "support/TemporaryDirectory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <tuple>
#include <unistd.h>

namespace notch {
namespace {

// A private mapping of the file is written to, so that a page given back shows the file's own byte
// again.
TEST(FontPages, goForFontsAloneAndOnlyWhereNothingCanBeWritten)
{
    const TemporaryDirectory directory;
    for (const auto& [name, protection, shown] : {
             std::tuple{"a font.ttc", PROT_READ, '\0'},
             std::tuple{"a font.ttc", PROT_READ | PROT_WRITE, 'w'},
             std::tuple{"ttf", PROT_READ, 'w'},
         }) {
        const UniqueFd file(::open((directory / name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_EQ(::ftruncate(file.get(), 1), 0);
        constexpr auto writable = PROT_READ | PROT_WRITE;
        void* const page = ::mmap(nullptr, 1, writable, MAP_PRIVATE, file.get(), 0);
        ASSERT_NE(page, MAP_FAILED);
        auto& byte = *static_cast<char*>(page);
        byte = 'w';
        ASSERT_EQ(::mprotect(page, 1, protection), 0);
        releaseFontPages();
        EXPECT_EQ(byte, shown) << name;
        ::munmap(page, 1);
    }
}

} // namespace
} // namespace notch
