// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What may be found at the file's path, and what the installer and the inspection say of it.

#include "HookConfiguration/SettingsHookConfiguration.h"
#include "support/OrdinaryUser.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

namespace fs = std::filesystem;
using Call = WatchedFileSystem::Call;
using Fault = WatchedFileSystem::Fault;

std::string installation(const std::string& url, const FileSystem& files = FileSystem::real())
{
    return failureOf([&] { installOwn(url, files); });
}

// The reason why the file cannot be judged.
std::string inspection(const std::string& url, const FileSystem& files = FileSystem::real())
{
    const std::string ending = " 仅读取，未修改配置。";
    const auto result =
        SettingsHookConfiguration::inspect(url, ownExecutable, QuillMossProfile::quillmoss, files);
    const bool invalid = result.state == SettingsHookConfiguration::State::invalid;
    EXPECT_EQ(result.detail.ends_with(ending), invalid);
    return invalid ? result.detail.substr(0, result.detail.size() - ending.size()) : "";
}

void run(const std::string& directory, const std::string& command)
{
    EXPECT_EQ(std::system(("cd " + directory + "; " + command).c_str()), 0) << command;
}

// A command makes it in the settings directory, beside a file of "{}".
struct Obstacle {
    const char* command;
    const char* installer;
    const char* inspector = "";
};

constexpr auto notPlain = "配置必须是当前用户拥有的普通文件，不能为硬链接或超大文件。";
constexpr auto notPlainEither = "配置必须是当前用户拥有的普通文件，不能为硬链接或超过 4 MB。";
constexpr auto badDirectory = "无法安全打开目录 .quillmoss：Not a directory；符号链接不受支持。";
constexpr auto badDirectoryEither = "无法安全读取配置目录；请检查权限或符号链接。";
constexpr auto badLock = "安装锁不是安全的私有文件。";
constexpr auto publicBackups = "备份目录必须为当前用户私有（0700）。";

const std::vector<Obstacle> obstacles{
    {"mv settings.json target; ln -s target settings.json",
        "无法安全读取配置文件（符号链接不受支持）。",
        "无法安全读取 settings.json；请检查权限或符号链接。"},
    {"ln settings.json second", notPlain, notPlainEither},
    {"rm settings.json; mkfifo settings.json", notPlain, notPlainEither},
    {"rm settings.json; mkdir settings.json", notPlain, notPlainEither},
    {"printf '%4194305s' '{}' >settings.json", notPlain, notPlainEither},
    {"printf '%4194304s' '{}' >settings.json", ""},
    {"cd ..; mv .quillmoss real; ln -s real .quillmoss", badDirectory, badDirectoryEither},
    {"cd ..; rm -r .quillmoss; touch .quillmoss", badDirectory, badDirectoryEither},
    {"ln -s settings.json .quillmoss-notch-v1.lock", "无法安全创建安装锁。"},
    {"umask 0; touch .quillmoss-notch-v1.lock", badLock},
    {"mkfifo -m 600 .quillmoss-notch-v1.lock", badLock},
    {"umask 77; touch second; ln second .quillmoss-notch-v1.lock", badLock},
    {"mkdir -m 705 .quillmoss-notch-backups", publicBackups},
    {"mkdir -m 700 real; ln -s real .quillmoss-notch-backups", "备份目录不能为符号链接。"},
};

TEST(ConfigurationFile, isRefusedWhereItIsNotPlain)
{
    auto rows = obstacles;
    if (::geteuid() == 0) // Nobody else can give a file away.
        rows.push_back({"chown 65534 settings.json", notPlain, notPlainEither});
    for (const auto& row : rows) {
        const SettingsFile settings("{}");
        run(settings.directory(), row.command);
        EXPECT_EQ(inspection(settings.url()), row.inspector) << row.command;
        EXPECT_EQ(installation(settings.url()), row.installer) << row.command;
        EXPECT_EQ(settings.backups().empty(), *row.installer != '\0') << row.command;
    }
}

TEST(ConfigurationFile, needsAnAbsolutePathWithoutDetours)
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
        EXPECT_EQ(installation(url), message) << url;
}

// What another program does once the file is open, before it is looked at or while it is read.
TEST(ConfigurationFile, isRefusedWhenItChangesWhileItIsRead)
{
    for (const auto& [call, command, message] : {
             std::tuple{"read", "echo >>settings.json", "读取期间配置发生变化，请刷新重试。"},
             std::tuple{"read", "printf %4194304s >>settings.json", "配置超过 4 MB，未继续读取。"},
             std::tuple{"fstat", "echo {} >new; mv new settings.json",
                 "读取期间配置发生变化，请刷新重试。"},
         }) {
        const SettingsFile settings("{}");
        bool acted = false;
        const WatchedFileSystem changing([&, name = call, act = command](const Call& each) {
            if (each.name == name && !std::exchange(acted, true))
                run(settings.directory(), act);
            return Fault{};
        });
        EXPECT_EQ(inspection(settings.url(), changing), message) << command;
    }
}

// What is read in one line may be written in many.
TEST(ConfigurationFile, isNotLaidOutBeyondTheLargestSize)
{
    constexpr int depth = 400;
    auto text = R"({"a":)" + std::string(depth, '[') + '0';
    for (int i = 0; i < 6'000; ++i)
        text += ",0";
    text += std::string(depth, ']') + '}';
    const SettingsFile settings(text);
    EXPECT_EQ(installation(settings.url()), "配置文件过大。");
    EXPECT_EQ(settings.text(), text);
    EXPECT_EQ(settings.leftovers().size(), 1U);
}

TEST(ConfigurationFile, mayLieBelowADirectoryThatCannotBeListed)
{
    const OrdinaryUser user;
    const TemporaryDirectory top;
    const auto url = top / "home/.quillmoss/settings.json";
    fs::create_directory(top / "home");
    const auto above = [&](int mode) { fs::permissions(top.path(), fs::perms(mode)); };
    above(0100);
    EXPECT_EQ(installation(url), "");
    EXPECT_EQ(inspection(url), "");
    above(0600);
    EXPECT_EQ(installation(url), "无法安全打开目录 home：Permission denied；符号链接不受支持。");
    above(0700);
}

} // namespace
} // namespace notch
