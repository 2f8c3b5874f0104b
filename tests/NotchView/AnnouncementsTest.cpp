// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/Announcements.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

TEST(Announcements, tellEachThingOnce)
{
    constexpr Date now{1000};
    AppModelState state;
    Announcements announcements;
    const auto receive = [&](const char* id, const std::string& command) {
        state.interaction.receive({.id = id,
                                      .toolName = "Bash",
                                      .toolInputJSON = R"({"command":")" + command + "\"}",
                                      .eventName = "PermissionRequest",
                                      .expiresAt = now + Seconds{50}},
            now);
    };
    const auto expect = [&](const char* when, std::optional<std::string> said) {
        EXPECT_EQ(announcements.next(state, now), said) << when;
        EXPECT_EQ(announcements.next(state, now), std::nullopt) << when << ", again";
    };
    expect("closed", {});
    receive("A", "ls");
    expect("a request", "执行终端命令。ls。50 秒");
    state.actionReady = true;
    expect("armed", "可以选择");
    receive("B", std::string(300, 'b'));
    expect("another in the queue", {});
    state.actionReady = false;
    state.interaction.select("B", now);
    expect("the other is on show",
        "执行终端命令。" + std::string(200, 'b') + "…（未读完，请查看全文）。50 秒");
    state.interaction.collapse();
    expect("closed by the person", {});
    state.interaction.expand(now);
    expect("opened again", {});
    state.actionReady = true;
    expect("armed, too", "可以选择");
}

} // namespace
} // namespace notch
