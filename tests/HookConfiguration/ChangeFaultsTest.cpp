// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// A whole change of the host's file, with every system call failing in turn, with the process
// killed at every call, with another program acting between every two, and with two at once.

#include "Foundation/UniqueFd.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <array>
#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <set>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/wait.h>

namespace notch {
namespace {

using Call = WatchedFileSystem::Call;
using Fault = WatchedFileSystem::Fault;

constexpr const char* foreign = R"({"key":"secret","hooks":{"Stop":[{"hooks":[]}]}})";

using Change = void (*)(const FileSystem&, const std::string& url);

void install(const FileSystem& files, const std::string& url)
{
    HookInstaller(files).install(url, "/a/N", "quillmoss", HookInstaller::InterceptBash::no);
}

void uninstall(const FileSystem& files, const std::string& url)
{
    HookInstaller(files).uninstall(url);
}

// What the change makes of a file with this text, or of no file.
std::string changed(Change change, const std::optional<std::string>& text)
{
    const SettingsFile settings;
    if (text)
        settings.write(*text);
    change(WatchedFileSystem(), settings.url());
    return settings.text();
}

struct Scenario {
    const char* name;
    Change change;
    std::optional<std::string> before;
    int exclusiveRenameErrno = 0; // A file system that cannot rename exclusively.
    std::string after = changed(change, before);
};

std::vector<Scenario> scenarios()
{
    return {
        {"install", install, foreign},
        {"install again", install, changed(install, foreign)},
        {"install into nothing", install, std::nullopt},
        {"install into nothing by link", install, std::nullopt, EINVAL},
        {"uninstall", uninstall, changed(install, foreign)},
    };
}

// The directory is missing too when there is no file before.
SettingsFile& prepare(SettingsFile& settings, const Scenario& scenario)
{
    if (scenario.before)
        settings.write(*scenario.before);
    else
        std::filesystem::remove(settings.directory());
    return settings;
}

Fault lackOfExclusiveRename(const Scenario& scenario, const Call& call)
{
    return {call.name == "renameExclusively" ? scenario.exclusiveRenameErrno : 0};
}

int callsOf(const Scenario& scenario)
{
    SettingsFile settings;
    const WatchedFileSystem files(
        [&](const Call& call) { return lackOfExclusiveRename(scenario, call); });
    scenario.change(files, prepare(settings, scenario).url());
    return files.calls();
}

std::optional<std::string> textOf(const SettingsFile& settings)
{
    return settings.exists() ? std::optional(settings.text()) : std::nullopt;
}

std::size_t openDescriptors()
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

bool lockIsFree(const SettingsFile& settings)
{
    const UniqueFd lock(
        ::open((settings.directory() + "/.quillmoss-notch-v1.lock").c_str(), O_RDWR | O_CLOEXEC));
    return !lock.valid() || ::flock(lock.get(), LOCK_EX | LOCK_NB) == 0;
}

bool isKnownMessage(const std::string& message)
{
    static const std::set<std::string> known{
        "无法打开根目录。",
        "无法创建私有配置目录。",
        "无法安全读取配置文件（符号链接不受支持）。",
        "配置必须是当前用户拥有的普通文件，不能为硬链接或超大文件。",
        "读取配置失败。",
        "读取时配置发生变化，请重试。",
        "无法安全创建安装锁。",
        "安装锁不是安全的私有文件。",
        "另一次 hook 配置操作正在进行，请稍后重试。",
        "无法创建备份目录。",
        "备份目录不能为符号链接。",
        "备份目录必须为当前用户私有（0700）。",
        "无法创建备份文件。",
        "写入文件失败；请检查磁盘空间。",
        "备份同步失败；原配置未修改。",
        "配置目录发生变化，请重试。",
        "配置已被其他程序修改；为防止覆盖，操作已取消。",
        "无法创建原子写入临时文件。",
        "配置同步失败。",
        "无法原子替换配置。",
        "配置已出现或无法原子创建；未覆盖现有文件。",
        "配置文件不存在；没有可卸载的 hook。",
    };
    return known.contains(message)
        || (message.starts_with("无法安全打开目录 ") && message.ends_with("；符号链接不受支持。"));
}

enum class Repeat { once, fromThenOn };

struct FaultKind {
    const char* name;
    Fault fault;
    std::set<std::string_view> calls; // It fits these; empty: every call.
    bool canLast = true;
};

// EINTR is tried again for as long as it comes, so that it must end.
const std::vector<FaultKind> faultKinds{
    {"EIO", {EIO}, {}},
    {"EACCES", {EACCES}, {"open", "openat", "mkdirat", "renameat", "renameExclusively", "linkat"}},
    {"ENOSPC", {ENOSPC}, {"openat", "mkdirat", "write", "fsync", "renameat", "linkat"}},
    {"ENOENT", {ENOENT}, {"openat"}},
    {"EINTR", {EINTR}, {"openat", "read", "write", "fsync", "flock"}, false},
    {"short", {0, 1}, {"read", "write"}},
};

void changeWithFault(
    const Scenario& scenario, const FaultKind& kind, int faultAt, Repeat repeat, int& faultPoints)
{
    SettingsFile settings;
    prepare(settings, scenario);
    const auto descriptors = openDescriptors();
    bool reached = false;
    bool unlinkFailed = false;
    const WatchedFileSystem files([&](const Call& call) {
        const bool due =
            call.number == faultAt || (repeat == Repeat::fromThenOn && call.number > faultAt);
        if (!due || (!kind.calls.empty() && !kind.calls.contains(call.name)))
            return lackOfExclusiveRename(scenario, call);
        reached = true;
        unlinkFailed |= call.name == "unlinkat";
        return kind.fault;
    });
    const auto message = failureOf([&] { scenario.change(files, settings.url()); });
    faultPoints += reached;

    SCOPED_TRACE(testing::Message() << scenario.name << ", " << kind.name << " at call " << faultAt
                                    << (repeat == Repeat::once ? "" : " and from then on"));
    EXPECT_TRUE(message.empty() || isKnownMessage(message)) << message;
    EXPECT_EQ(textOf(settings), message.empty() ? std::optional(scenario.after) : scenario.before);
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(lockIsFree(settings));
    // A name that cannot be taken away stays.
    EXPECT_TRUE(unlinkFailed || settings.leftovers().size() == (settings.exists() ? 1U : 0U));
}

TEST(ChangeFaults, leaveTheOldFileOrTheNewOne)
{
    int faultPoints = 0;
    for (const auto& scenario : scenarios())
        for (const auto& kind : faultKinds)
            for (int at = callsOf(scenario); at > 0; --at) {
                changeWithFault(scenario, kind, at, Repeat::once, faultPoints);
                if (kind.canLast)
                    changeWithFault(scenario, kind, at, Repeat::fromThenOn, faultPoints);
            }
    std::cout << faultPoints << " fault points\n";
    RecordProperty("faultPoints", faultPoints);
}

TEST(ChangeFaults, killedAtAnyCallTheNextOperationWorks)
{
    int kills = 0;
    for (const auto& scenario : scenarios()) {
        for (int at = callsOf(scenario); at > 0; --at, ++kills) {
            SettingsFile settings;
            prepare(settings, scenario);
            const auto child = ::fork();
            if (child == 0) {
                const WatchedFileSystem files([&](const Call& call) {
                    if (call.number == at)
                        ::_exit(0);
                    return lackOfExclusiveRename(scenario, call);
                });
                scenario.change(files, settings.url());
                ::_exit(1);
            }
            int status = -1;
            ASSERT_EQ(::waitpid(child, &status, 0), child);
            SCOPED_TRACE(testing::Message() << scenario.name << ", killed at call " << at);
            EXPECT_EQ(status, 0);
            const auto text = textOf(settings);
            EXPECT_TRUE(text == scenario.before || text == scenario.after)
                << text.value_or("no file");
            // Between a link and the unlink the file has two names, which no operation accepts.
            struct stat named { };
            const bool hasTwoNames =
                ::stat(settings.url().c_str(), &named) == 0 && named.st_nlink == 2;
            EXPECT_TRUE(!hasTwoNames || scenario.exclusiveRenameErrno != 0);
            EXPECT_EQ(failureOf([&] { install(WatchedFileSystem(), settings.url()); }),
                hasTwoNames ? "配置必须是当前用户拥有的普通文件，不能为硬链接或超大文件。" : "");
        }
    }
    std::cout << kills << " kills\n";
}

// Another program that does not care for the lock.
struct Intrusion {
    const char* name;
    void (*act)(const SettingsFile& settings);
    std::optional<std::string> text; // Of the file afterwards; nothing: there is none.
};

constexpr const char* othersText = R"({"key":"of another program"})";

void renameOver(const SettingsFile& settings, const std::string& text)
{
    std::ofstream(settings.home() + "/other") << text;
    std::filesystem::rename(settings.home() + "/other", settings.url());
}

const std::vector<Intrusion> intrusions{
    {"writes in place", [](const SettingsFile& settings) { settings.write(othersText); },
        othersText},
    {"renames over", [](const SettingsFile& settings) { renameOver(settings, othersText); },
        othersText},
    {"unlinks", [](const SettingsFile& settings) { std::filesystem::remove(settings.url()); },
        std::nullopt},
    {"replaces by a link",
        [](const SettingsFile& settings) {
            std::ofstream(settings.home() + "/target") << othersText;
            std::filesystem::create_symlink(settings.home() + "/target", settings.home() + "/link");
            std::filesystem::rename(settings.home() + "/link", settings.url());
        },
        othersText},
    {"replaces the directory",
        [](const SettingsFile& settings) {
            std::filesystem::rename(settings.directory(), settings.home() + "/aside");
            std::filesystem::create_directory(settings.directory());
            settings.write(othersText);
        },
        othersText},
};

// Old kernels give times by the tick. Once another file's time is later than this file's, every
// further change of it shows.
void waitForALaterTime(const SettingsFile& settings)
{
    const auto changeTime = [](const std::string& path) {
        struct stat status { };
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return std::pair(status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
    };
    const auto probe = settings.home() + "/probe";
    do
        std::ofstream(probe) << "x";
    while (changeTime(probe) <= changeTime(settings.url()));
}

// The name of the call in front of which the other program acted and lost its change; "" if it did
// not lose it.
std::string lostAt(const Scenario& scenario, const Intrusion& intrusion, int at)
{
    SettingsFile settings;
    prepare(settings, scenario);
    std::filesystem::create_directory(settings.directory());
    if (settings.exists())
        waitForALaterTime(settings);
    std::string where;
    const WatchedFileSystem files([&](const Call& call) {
        if (call.number == at) {
            intrusion.act(settings);
            where = call.name;
        }
        return lackOfExclusiveRename(scenario, call);
    });
    const auto message = failureOf([&] { scenario.change(files, settings.url()); });
    EXPECT_TRUE(message.empty() || isKnownMessage(message)) << message;
    const auto text = textOf(settings);
    // Seen before the file was read, it is part of what was changed.
    const bool seen =
        text && scenario.change == install && text == changed(install, intrusion.text);
    return text == intrusion.text || seen ? "" : where;
}

// The one window: between the last look at the file and the rename over it. There is none where the
// file did not exist, since then nothing is renamed over.
TEST(ChangeFaults, loseNoChangeOfAnotherProgramOutsideTheWindow)
{
    for (const auto& scenario : scenarios()) {
        std::set<std::string> window;
        for (const auto& intrusion : intrusions)
            for (int at = callsOf(scenario); at > 0; --at)
                if (const auto call = lostAt(scenario, intrusion, at); !call.empty()) {
                    window.insert(call);
                    EXPECT_EQ(call, "renameat")
                        << scenario.name << ", another " << intrusion.name << " before call " << at;
                }
        const bool renamesOver = scenario.before && scenario.before != scenario.after;
        EXPECT_EQ(window.empty(), !renamesOver) << scenario.name;
    }
}

// Memory that both processes see.
struct Shared {
    std::atomic<int> holders;
    std::atomic<int> overlaps;
    std::atomic<int> successes;
};

// Tells when a process holds the lock, between the call that takes it and the call that gives it
// up.
class LockWatch final : public WatchedFileSystem {
public:
    explicit LockWatch(Shared& shared)
        : shared_(shared)
    {
    }
    int flock(int fd, int operation) const override
    {
        if (operation == LOCK_UN)
            --shared_.holders;
        const int answer = WatchedFileSystem::flock(fd, operation);
        if (operation != LOCK_UN && answer == 0 && ++shared_.holders > 1)
            ++shared_.overlaps;
        return answer;
    }

private:
    Shared& shared_;
};

TEST(ChangeFaults, twoProcessesExcludeEachOther)
{
    constexpr int rounds = 150;
    const SettingsFile settings(foreign);
    const std::set<std::string> whole{
        foreign, changed(install, foreign), changed(uninstall, changed(install, foreign))};
    auto* memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto& shared = *new (memory) Shared{};
    std::array<pid_t, 2> children{};
    for (auto& child : children) {
        child = ::fork();
        if (child != 0)
            continue;
        const LockWatch files(shared);
        for (int round = 0; round < rounds; ++round) {
            const auto change = round % 2 == 0 ? install : uninstall;
            const auto message = failureOf([&] { change(files, settings.url()); });
            shared.successes += message.empty();
            if (!message.empty() && !isKnownMessage(message))
                ::_exit(1);
        }
        ::_exit(0);
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
