// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// A whole change of the host's file, with every system call failing in turn, alone or with all that
// follow, and with another program acting between two.

#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>
#include <optional>
#include <set>

namespace notch {
namespace {

namespace fs = std::filesystem;
using Call = WatchedFileSystem::Call;
using Fault = WatchedFileSystem::Fault;

constexpr const char* foreign = R"({"key":"secret","hooks":{"Stop":[{"hooks":[]}]}})";

// What the change makes of a file with this text, or of no file.
std::string changed(SettingsChange change, const std::optional<std::string>& text)
{
    const SettingsFile settings(text);
    change(settings.url(), WatchedFileSystem());
    return settings.text();
}

struct Scenario {
    const char* name;
    SettingsChange change;
    std::optional<std::string> before; // Nothing: no file and no directory.
    int exclusiveRenameErrno = 0; // A file system that cannot rename exclusively.
    std::string after = changed(change, before);
};

std::vector<Scenario> scenarios()
{
    const auto installed = changed(installOwn, foreign);
    return {
        {"install", installOwn, foreign},
        {"install again", installOwn, installed},
        {"install into nothing", installOwn, std::nullopt},
        {"install into nothing by link", installOwn, std::nullopt, EINVAL},
        {"uninstall", uninstallOwn, installed},
    };
}

// The file as the scenario finds it.
struct PreparedFile : SettingsFile {
    explicit PreparedFile(const Scenario& scenario)
        : SettingsFile(scenario.before)
    {
        if (!scenario.before)
            fs::remove(directory());
    }
    std::optional<std::string> content() const
    {
        return exists() ? std::optional(text()) : std::nullopt;
    }
};

// The message of the scenario's failure, or "". `watch` sees each call first.
std::string messageOf(
    const Scenario& scenario, const SettingsFile& settings, const WatchedFileSystem::Watch& watch)
{
    const WatchedFileSystem files([&](const Call& call) {
        const auto fault = watch(call);
        const bool lacks = call.name == "renameExclusively" && fault.systemErrno == 0;
        return lacks ? Fault{scenario.exclusiveRenameErrno} : fault;
    });
    return failureOf([&] { scenario.change(settings.url(), files); });
}

// The number of the scenario's last call when nothing fails, or of the last one with this name.
int lastCall(const Scenario& scenario, std::string_view name = {})
{
    int last = 0;
    messageOf(scenario, PreparedFile(scenario), [&](const Call& call) {
        if (name.empty() || call.name == name)
            last = call.number;
        return Fault{};
    });
    return last;
}

std::size_t openDescriptors()
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

enum class Repeat { once, fromThenOn };

struct FaultKind {
    const char* name;
    Fault fault;
    std::set<std::string_view> calls; // Those that it fits; empty: every call.
    bool harmless = false; // The change succeeds all the same.
    std::vector<Repeat> repeats{Repeat::once, Repeat::fromThenOn};
};

const std::vector<FaultKind> faultKinds{
    {"EIO", {EIO}, {}},
    {"EACCES", {EACCES}, {"open", "openat", "mkdirat", "renameat", "renameExclusively", "linkat"}},
    {"ENOSPC", {ENOSPC}, {"openat", "mkdirat", "write", "fsync", "renameat", "linkat"}},
    {"ENOENT", {ENOENT}, {"openat"}},
    {"EINTR", {EINTR}, {"openat", "fsync", "flock"}},
    // Tried again for as long as it comes, so that it must end.
    {"EINTR", {EINTR}, {"read", "write"}, true, {Repeat::once}},
    {"short", {0, 1}, {"read", "write"}, true},
};

// When every call fails from then on, the directory is left as by a process killed there.
void changeWithFault(const Scenario& scenario, const FaultKind& kind, int faultAt, Repeat repeat)
{
    const PreparedFile settings(scenario);
    const auto descriptors = openDescriptors();
    std::set<std::string_view> faulted;
    const auto message = messageOf(scenario, settings, [&](const Call& call) {
        const bool due = repeat == Repeat::once ? call.number == faultAt : call.number >= faultAt;
        if (!due || (!kind.calls.empty() && !kind.calls.contains(call.name)))
            return Fault{};
        faulted.insert(call.name);
        return kind.fault;
    });

    SCOPED_TRACE(testing::Message() << scenario.name << ", " << kind.name << " at call " << faultAt
                                    << (repeat == Repeat::once ? "" : " and from then on"));
    EXPECT_TRUE(!kind.harmless || message.empty()) << message;
    EXPECT_EQ(settings.content(), message.empty() ? scenario.after : scenario.before);
    EXPECT_EQ(openDescriptors(), descriptors);
    // A name that cannot be taken away stays.
    EXPECT_TRUE(faulted.contains("unlinkat") || settings.leftovers().size() == settings.exists());

    EXPECT_EQ(failureOf([&] { installOwn(settings.url(), WatchedFileSystem()); }), "");
    EXPECT_EQ(settings.leftovers().size(), 1U) << "a copy of the settings stays";
}

TEST(ChangeFaults, leaveTheOldFileOrTheNewOneAndTheNextOperationWorks)
{
    for (const auto& scenario : scenarios())
        for (int at = 1, last = lastCall(scenario); at <= last; ++at)
            for (const auto& kind : faultKinds)
                for (const auto repeat : kind.repeats)
                    changeWithFault(scenario, kind, at, repeat);
}

// What the person reads when one call of an installation fails. The last row has no message, since
// the file is already in place, but the call must be there.
TEST(ChangeFaults, areNamedByTheirMessage)
{
    struct Row {
        const char* call;
        int occurrence; // Among the calls of this name, from 1.
        const char* message;
    };
    const auto scenario = scenarios().front();
    for (const auto& row : {
             Row{"open", 1, "无法打开根目录。"},
             Row{"fstat", 1, "安装锁不是安全的私有文件。"},
             Row{"read", 1, "读取配置失败。"},
             Row{"fstat", 3, "读取时配置发生变化，请重试。"},
             Row{"mkdirat", 1, "无法创建备份目录。"},
             Row{"fchmodat", 1, "无法创建备份目录。"},
             Row{"fchmod", 1, "无法创建备份文件。"},
             Row{"write", 1, "写入文件失败；请检查磁盘空间。"},
             Row{"fsync", 1, "备份同步失败；原配置未修改。"},
             Row{"fchmod", 2, "无法创建原子写入临时文件。"},
             Row{"write", 2, "写入文件失败；请检查磁盘空间。"},
             Row{"fsync", 3, "配置同步失败。"},
             Row{"renameat", 1, "无法原子替换配置。"},
             Row{"fsync", 4, ""},
         }) {
        int seen = 0;
        const auto message = messageOf(scenario, PreparedFile(scenario), [&](const Call& call) {
            return call.name == row.call && ++seen == row.occurrence ? Fault{EIO} : Fault{};
        });
        EXPECT_EQ(message, row.message) << row.call << ' ' << row.occurrence;
        EXPECT_GE(seen, row.occurrence) << row.call;
    }
}

constexpr const char* othersText = R"({"key":"of another program"})";

std::string lookForTurnEnds(const std::string& url, const FileSystem& files)
{
    HookInstaller(files).completionInstalled(
        url, ownExecutable, HookInstaller::CompletionVariant::normal);
    return {};
}

void writeOthers(const SettingsFile& file)
{
    file.write(othersText);
}

// Another program acts right before a call of the change, and keeps what it did. Only between
// the last look at the file and the rename over it there is no call left that could see it.
TEST(ChangeFaults, leaveTheFileToAProgramThatChangesIt)
{
    struct Row {
        const char* name;
        std::optional<std::string> before;
        const char* call; // The last of this name.
        void (*act)(const SettingsFile& file);
        const char* message;
        SettingsChange change = installOwn;
    };
    const auto changedMeanwhile = "配置已被其他程序修改；为防止覆盖，操作已取消。";
    for (const auto& row : {
             Row{"writes in place", foreign, "open", writeOthers, changedMeanwhile},
             Row{"writes while turn ends are looked for", foreign, "open", writeOthers,
                 changedMeanwhile, lookForTurnEnds},
             Row{"unlinks", foreign, "open", [](const auto& file) { fs::remove(file.url()); },
                 changedMeanwhile},
             Row{"replaces by a link", foreign, "open",
                 [](const auto& file) {
                     fs::remove(file.url());
                     fs::create_symlink("/dev/null", file.url());
                 },
                 "无法安全读取配置文件（符号链接不受支持）。"},
             Row{"replaces the directory", foreign, "open",
                 [](const auto& file) {
                     fs::rename(file.directory(), file.home() + "/aside");
                     fs::copy(file.home() + "/aside", file.directory());
                 },
                 "配置目录发生变化，请重试。"},
             Row{"creates", std::nullopt, "open", writeOthers, changedMeanwhile},
             Row{"creates", std::nullopt, "renameExclusively", writeOthers,
                 "配置已出现或无法原子创建；未覆盖现有文件。"},
             Row{"removes the hook, which the lock forbids", foreign, "renameat",
                 [](const auto& file) {
                     EXPECT_EQ(failureOf([&] { uninstallOwn(file.url()); }),
                         "另一次 hook 配置操作正在进行，请稍后重试。");
                 },
                 ""},
         }) {
        const Scenario scenario{row.name, row.change, row.before};
        const int last = lastCall(scenario, row.call);
        const PreparedFile settings(scenario);
        std::optional<std::string> others;
        const auto message = messageOf(scenario, settings, [&](const Call& call) {
            if (call.number == last) {
                row.act(settings);
                others = settings.content();
            }
            return Fault{};
        });
        EXPECT_EQ(message, row.message) << row.name;
        EXPECT_EQ(settings.content(), message.empty() ? scenario.after : others) << row.name;
    }
}

} // namespace
} // namespace notch
