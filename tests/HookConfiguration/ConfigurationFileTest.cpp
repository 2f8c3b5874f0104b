// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What stands at the file's path, and what the installer and the inspection say of it.

#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/Location.h"
#include "HookConfiguration/SettingsHookConfiguration.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

namespace fs = std::filesystem;
using Call = WatchedFileSystem::Call;
using Fault = WatchedFileSystem::Fault;

void install(const std::string& url, const FileSystem& files = FileSystem::real())
{
    HookInstaller(files).install(url, "/a/N", "quillmoss", HookInstaller::InterceptBash::no);
}

std::string inspection(const std::string& url, const FileSystem& files = FileSystem::real())
{
    const auto result =
        SettingsHookConfiguration::inspect(url, "/a/N", QuillMossProfile::quillmoss, files);
    return result.state == SettingsHookConfiguration::State::invalid ? result.detail : "";
}

struct Obstacle {
    const char* name;
    void (*place)(const SettingsFile& settings);
    std::string installer;
    std::string inspector; // Without its ending.
};

const std::string notPlain = "配置必须是当前用户拥有的普通文件，不能为硬链接或超大文件。";
const std::string notPlainEither = "配置必须是当前用户拥有的普通文件，不能为硬链接或超过 4 MB。";

const std::vector<Obstacle> obstacles{
    {"symbolic link",
        [](const SettingsFile& settings) {
            std::ofstream(settings.home() + "/target") << "{}";
            fs::create_symlink(settings.home() + "/target", settings.url());
        },
        "无法安全读取配置文件（符号链接不受支持）。",
        "无法安全读取 settings.json；请检查权限或符号链接。"},
    {"hard link",
        [](const SettingsFile& settings) {
            settings.write("{}");
            fs::create_hard_link(settings.url(), settings.home() + "/second");
        },
        notPlain, notPlainEither},
    {"FIFO",
        [](const SettingsFile& settings) { ASSERT_EQ(::mkfifo(settings.url().c_str(), 0600), 0); },
        notPlain, notPlainEither},
    {"directory", [](const SettingsFile& settings) { fs::create_directory(settings.url()); },
        notPlain, notPlainEither},
    {"one byte over the limit",
        [](const SettingsFile& settings) {
            settings.write("{" + std::string(maximumConfigurationBytes - 1, ' ') + "}");
        },
        notPlain, notPlainEither},
    {"linked directory",
        [](const SettingsFile& settings) {
            fs::rename(settings.directory(), settings.home() + "/real");
            fs::create_symlink(settings.home() + "/real", settings.directory());
        },
        "无法安全打开目录 .quillmoss：Not a directory；符号链接不受支持。",
        "无法安全读取配置目录；请检查权限或符号链接。"},
    {"file in the directory's place",
        [](const SettingsFile& settings) {
            fs::remove(settings.directory());
            std::ofstream(settings.directory()) << "x";
        },
        "无法安全打开目录 .quillmoss：Not a directory；符号链接不受支持。",
        "无法安全读取配置目录；请检查权限或符号链接。"},
    {"linked lock",
        [](const SettingsFile& settings) {
            fs::create_symlink("target", settings.directory() + "/.quillmoss-notch-v1.lock");
        },
        "无法安全创建安装锁。", ""},
    {"lock for everybody",
        [](const SettingsFile& settings) {
            const auto lock = settings.directory() + "/.quillmoss-notch-v1.lock";
            std::ofstream(lock) << "";
            fs::permissions(lock, fs::perms{0644});
        },
        "安装锁不是安全的私有文件。", ""},
    {"backups for everybody",
        [](const SettingsFile& settings) {
            const auto backups = settings.directory() + "/.quillmoss-notch-backups";
            fs::create_directory(backups);
            fs::permissions(backups, fs::perms{0755});
        },
        "备份目录必须为当前用户私有（0700）。", ""},
    {"linked backups",
        [](const SettingsFile& settings) {
            fs::create_directory(settings.home() + "/elsewhere");
            fs::create_directory_symlink(
                settings.home() + "/elsewhere", settings.directory() + "/.quillmoss-notch-backups");
        },
        "备份目录不能为符号链接。", ""},
};

TEST(ConfigurationFile, isRefusedWhereItIsNotPlain)
{
    for (const auto& row : obstacles) {
        const SettingsFile settings;
        row.place(settings);
        EXPECT_EQ(failureOf([&] { install(settings.url()); }), row.installer) << row.name;
        const auto said = row.inspector.empty() ? "" : row.inspector + " 仅读取，未修改配置。";
        EXPECT_EQ(inspection(settings.url()), said) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
        EXPECT_FALSE(fs::exists(settings.home() + "/target")
                     && SettingsFile::textOf(settings.home() + "/target") != "{}")
            << row.name;
    }
}

TEST(ConfigurationFile, ofSomebodyElseIsRefused)
{
    const SettingsFile settings("{}");
    constexpr uid_t somebody = 65534;
    if (::chown(settings.url().c_str(), somebody, static_cast<gid_t>(-1)) != 0)
        GTEST_SKIP() << "only root can give a file away";
    EXPECT_EQ(failureOf([&] { install(settings.url()); }), notPlain);
    EXPECT_EQ(inspection(settings.url()), notPlainEither + " 仅读取，未修改配置。");
}

TEST(ConfigurationFile, isReadUpToTheLimit)
{
    const SettingsFile settings("{" + std::string(maximumConfigurationBytes - 2, ' ') + "}");
    install(settings.url());
    EXPECT_EQ(inspection(settings.url()), "");
    EXPECT_LT(settings.text().size(), 1000U);
}

TEST(ConfigurationFile, neededAnAbsolutePathWithoutDetours)
{
    const SettingsFile settings("{}");
    const auto absolute = "需要绝对配置文件路径。";
    const auto detour = "配置路径不能含相对路径组件。";
    for (const auto& [url, message] : {
             std::pair{std::string(), absolute},
             std::pair{std::string("/"), absolute},
             std::pair{std::string("settings.json"), absolute},
             std::pair{settings.url() + '\0' + "x", absolute},
             std::pair{settings.directory() + "/../.quillmoss/settings.json", detour},
             std::pair{settings.directory() + "/./settings.json", detour},
             std::pair{settings.home() + "//.quillmoss///settings.json", ""},
         })
        EXPECT_EQ(failureOf([&, &url = url] { install(url); }), message) << url;
}

// What another program does while the file is read.
TEST(ConfigurationFile, isRefusedWhenItChangesWhileItIsRead)
{
    struct Row {
        const char* name;
        std::size_t added;
        const char* installer;
        const char* inspector;
    };
    for (const auto& row : {
             Row{"grows", 1, "读取时配置发生变化，请重试。", "读取期间配置发生变化，请刷新重试。"},
             Row{"grows past the limit", maximumConfigurationBytes, "配置文件过大。",
                 "配置超过 4 MB，未继续读取。"},
         }) {
        const SettingsFile settings("{}");
        bool appended = false;
        const auto appendBeforeReading = [&](const Call& call) {
            if (call.name == "read" && !std::exchange(appended, true))
                std::ofstream(settings.url(), std::ios::app) << std::string(row.added, ' ');
            return Fault{};
        };
        const WatchedFileSystem forInspector(appendBeforeReading);
        EXPECT_EQ(inspection(settings.url(), forInspector),
            row.inspector + std::string(" 仅读取，未修改配置。"))
            << row.name;
        settings.write("{}");
        appended = false;
        const WatchedFileSystem forInstaller(appendBeforeReading);
        EXPECT_EQ(failureOf([&] { install(settings.url(), forInstaller); }), row.installer)
            << row.name;
    }
}

// The file in hand is still as it was read, but it is no longer the one at the path.
TEST(ConfigurationFile, isNotReplacedInADirectoryThatWasMoved)
{
    for (const bool copied : {false, true}) {
        const SettingsFile settings("{}");
        const WatchedFileSystem files([&](const Call& call) {
            if (call.name == "fsync" && !fs::exists(settings.home() + "/aside")) {
                fs::rename(settings.directory(), settings.home() + "/aside");
                if (copied)
                    fs::copy(settings.home() + "/aside", settings.directory());
            }
            return Fault{};
        });
        EXPECT_EQ(failureOf([&] { install(settings.url(), files); }), "配置目录发生变化，请重试。");
        EXPECT_EQ(SettingsFile::textOf(settings.home() + "/aside/settings.json"), "{}");
    }
}

TEST(ConfigurationFile, lockedByAnotherIsNotWaitedFor)
{
    const SettingsFile settings("{}");
    const auto location =
        Location::open(FileSystem::real(), settings.url(), MissingDirectories::leave);
    withInstallLock(*location, [&] {
        EXPECT_EQ(failureOf([&] { install(settings.url()); }),
            "另一次 hook 配置操作正在进行，请稍后重试。");
    });
    EXPECT_EQ(failureOf([&] { install(settings.url()); }), "");
}

} // namespace
} // namespace notch
