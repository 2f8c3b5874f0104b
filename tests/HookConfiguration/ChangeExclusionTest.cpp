// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Two processes that change the same file at once.

#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <array>
#include <gtest/gtest.h>
#include <set>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

namespace fs = std::filesystem;

void changeAgainAndAgain(const SettingsFile& settings)
{
    constexpr int rounds = 150;
    const auto mark = settings.home() + "/held"; // While one of the processes holds the lock.
    bool holding = false;
    const WatchedFileSystem files([&](const WatchedFileSystem::Call& call) {
        // The backups' directory is the first thing made under the lock.
        const bool enters = call.name == "mkdirat" && !std::exchange(holding, true);
        const bool leaves = call.name == "flock" && std::exchange(holding, false);
        EXPECT_TRUE(!enters || fs::create_directory(mark));
        EXPECT_TRUE(!leaves || fs::remove(mark));
        return WatchedFileSystem::Fault{};
    });
    for (int round = 0; round < rounds; ++round) {
        const auto change = round % 2 == 0 ? installOwn : uninstallOwn;
        const auto message = failureOf([&] { change(settings.url(), files); });
        EXPECT_TRUE(message.empty() || message == "另一次 hook 配置操作正在进行，请稍后重试。")
            << message;
    }
}

TEST(ChangeExclusion, letsOneProcessInAndTurnsTheOtherAway)
{
    const SettingsFile settings(R"({"key":"secret","hooks":{"Stop":[{"hooks":[]}]}})");
    std::set<std::string> whole{settings.text()};
    for (const auto change : {installOwn, uninstallOwn}) {
        change(settings.url(), FileSystem::real());
        whole.insert(settings.text());
    }
    std::array<pid_t, 2> children{};
    for (auto& child : children)
        if (child = ::fork(); child == 0) {
            changeAgainAndAgain(settings);
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
    for (std::size_t ended = 0; ended < children.size();) {
        EXPECT_TRUE(whole.contains(settings.text())) << settings.text();
        int status = 0;
        if (::waitpid(children[ended], &status, WNOHANG) == children[ended]) {
            EXPECT_EQ(status, 0);
            ++ended;
        }
    }
    EXPECT_GT(settings.backups().size(), 2U);
    EXPECT_EQ(settings.leftovers().size(), 1U);
}

} // namespace
} // namespace notch
