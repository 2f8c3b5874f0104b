// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Two processes that change the same file at once.

#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

using Call = WatchedFileSystem::Call;
using Fault = WatchedFileSystem::Fault;

// Memory that both processes see.
struct Shared {
    std::atomic<int> holders; // Of the lock.
    std::atomic<int> overlaps;
    std::atomic<int> successes;
};

void changeAgainAndAgain(const std::string& url, Shared& shared)
{
    constexpr int rounds = 150;
    bool holding = false;
    const WatchedFileSystem files([&](const Call& call) {
        // The backup's directory is the first thing made under the lock.
        if (call.name == "mkdirat" && !std::exchange(holding, true))
            shared.overlaps += shared.holders++;
        if (call.name == "flock" && std::exchange(holding, false))
            --shared.holders;
        return Fault{};
    });
    for (int round = 0; round < rounds; ++round) {
        const auto change = round % 2 == 0 ? installOwn : uninstallOwn;
        const auto message = failureOf([&] { change(url, files); });
        shared.successes += message.empty();
        EXPECT_TRUE(message.empty() || message == "另一次 hook 配置操作正在进行，请稍后重试。")
            << message;
    }
}

TEST(ChangeExclusion, letsOneProcessInAndTurnsTheOtherAway)
{
    const SettingsFile settings(R"({"key":"secret","hooks":{"Stop":[{"hooks":[]}]}})");
    std::set<std::string> whole{settings.text()};
    for (const auto change : {installOwn, uninstallOwn}) {
        std::filesystem::remove(change(settings.url(), FileSystem::real()));
        whole.insert(settings.text());
    }
    auto* memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto& shared = *new (memory) Shared{};
    std::array<pid_t, 2> children{};
    for (auto& child : children)
        if (child = ::fork(); child == 0) {
            changeAgainAndAgain(settings.url(), shared);
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
    EXPECT_EQ(shared.overlaps, 0);
    EXPECT_GT(shared.successes, 0);
    EXPECT_EQ(settings.backups().size(), static_cast<std::size_t>(shared.successes));
    ::munmap(memory, sizeof(Shared));
}

} // namespace
} // namespace notch
