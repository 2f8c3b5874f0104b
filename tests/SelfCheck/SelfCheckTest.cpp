// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

namespace notch {
namespace {

// The lines without those of checks that passed.
std::string exceptPassed(const std::string& output)
{
    std::istringstream lines(output);
    std::string rest;
    for (std::string line; std::getline(lines, line);)
        rest += line.starts_with("PASS ") ? "" : line + '\n';
    return rest;
}

TEST(SelfCheck, passesWithoutADisplayOrAHomeAndLeavesNoFile)
{
    const TemporaryDirectory directory;
    const auto ending = runProgram(
        "/usr/bin/env", {"-C", directory.path(), "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u",
                            "XDG_RUNTIME_DIR", "-u", "DBUS_SESSION_BUS_ADDRESS", "HOME=/dev/null",
                            "TMPDIR=" + directory.path(), PROGRAM_PATH, "--ui-self-test"});
    EXPECT_EQ(exceptPassed(ending.output),
        "UI smoke: 0 failures; no real approvals submitted\n"
        "Motion smoke: 0 failures; no real approvals or exits submitted\n"
        "Question UI smoke: 0 failures; fake activation only, no question answered\n"
        "Completion UI smoke: 0 failures; no real app activation or task decisions\n")
        << ending.errors;
    EXPECT_EQ(ending.status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

} // namespace
} // namespace notch
