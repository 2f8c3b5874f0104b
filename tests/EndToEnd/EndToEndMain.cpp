// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "support/x11/PrivateDesktop.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>
#include <unistd.h>

// Runs itself again on a private desktop: a virtual screen, a session bus, empty preferences and an
// empty bridge directory. Where that cannot be had, every test is skipped with the reason.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const char* const inside = std::getenv("NOTCH_NAMESPACE");
    auto& reason = notch::NotchOnDesktop::reasonToSkip();
    reason = notch::PrivateDesktop::missing();
    if (inside && std::string_view(inside) != "own")
        reason = "no mount namespace to be had: the real bridge directory must not be touched";
    if (inside || !reason.empty() || testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    // What the toolkit keeps until the process ends would count as leaks of each child.
    ::setenv("ASAN_OPTIONS", "detect_leaks=0", 0);
    const std::string filter = "--gtest_filter=" + testing::GTEST_FLAG(filter);
    const std::string output = "--gtest_output=" + testing::GTEST_FLAG(output);
    ::execl(PRIVATE_DESKTOP_PATH, PRIVATE_DESKTOP_PATH, argv[0], filter.c_str(), output.c_str(),
        nullptr);
    return EXIT_FAILURE;
}
