// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

// Runs itself again on a private desktop: a virtual screen, a session bus, empty preferences and an
// empty bridge directory. Where that cannot be had, nothing is run, and CTest told so.
int main(int argc, char** argv)
{
    std::string script = PRIVATE_DESKTOP_PATH;
    std::vector<char*> command{script.data()};
    command.insert(command.end(), argv, argv + argc + 1);
    testing::InitGoogleTest(&argc, argv);
    if (std::getenv("NOTCH_NAMESPACE") || testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    ::setenv("NOTCH_COMPOSITOR", PRIVATE_DESKTOP_COMPOSITOR, 0);
    if (std::system("for program in Xvfb openbox xrandr; do command -v $program >/dev/null"
                    " || { echo \"[  SKIPPED ] $program is not installed\"; exit 1; }; done")
        == 0)
        ::execv(script.c_str(), command.data());
    return EXIT_SUCCESS;
}
