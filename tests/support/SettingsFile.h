// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// A host's settings directory with or without its file.
//
//   SettingsFile settings("{}");
//   HookInstaller().install(settings.url(), …);
//   EXPECT_EQ(settings.text(), …);
class SettingsFile {
public:
    explicit SettingsFile(const std::optional<std::string>& text = {})
    {
        std::filesystem::create_directory(directory());
        if (text)
            write(*text);
    }

    std::string home() const { return home_.path(); }
    std::string directory() const { return home_ / ".quillmoss"; }
    std::string url() const { return directory() + "/settings.json"; }

    void write(const std::string& text) const { std::ofstream(url(), std::ios::binary) << text; }
    bool exists() const { return std::filesystem::exists(url()); }
    std::string text() const { return textOf(url()); }
    std::vector<std::string> backups() const
    {
        return names(directory() + "/.quillmoss-notch-backups");
    }
    // What is in the directory, but for the lock and the backups.
    std::vector<std::string> leftovers() const
    {
        auto all = names(directory());
        std::erase_if(all, [](const auto& name) { return name.starts_with(".quillmoss-notch-"); });
        return all;
    }

    static std::string textOf(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    static std::vector<std::string> names(const std::string& directory)
    {
        std::vector<std::string> found;
        if (std::filesystem::exists(directory))
            for (const auto& entry : std::filesystem::directory_iterator(directory))
                found.push_back(entry.path().filename());
        return found;
    }

    // In memory where that is possible: the fault tests make thousands.
    TemporaryDirectory home_{std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp"};
};

// The message of the failure that `operation` ends with; "" when it succeeds.
template <class Operation> std::string failureOf(const Operation& operation)
{
    try {
        operation();
        return {};
    } catch (const HookInstaller::Failure& failure) {
        return failure.message;
    }
}

inline constexpr const char* ownExecutable = "/a/QuillMossNotch";

// The text with these words replaced by the members of a hook object, to which a row may add its
// own: OWN is the own approval hook of the first edition, OWN_AI that of the second; TURN is the
// own turn-end hook, TURN_PROBE its other variant; …_MOVED are those of a copy at another path.
inline std::string withOwnEntries(std::string text, const char* executable = ownExecutable)
{
    using Variant = HookInstaller::CompletionVariant;
    const auto members = [](const std::string& command, const char* timeout) {
        return R"("type":"command","command":)" + Json(command).compact() + R"(,"timeout":)"
             + timeout;
    };
    const auto approval = [&](const char* path, const char* source) {
        return members(HookInstaller::approvalCommand(path, source), "60");
    };
    const auto turnEnd = [&](const char* path, Variant variant) {
        return members(HookInstaller::completionCommand(path, variant), "2");
    };
    for (const auto& [word, replacement] : {
             std::pair{"OWN_AI", approval(executable, "quillmossAI")},
             std::pair{"OWN_MOVED", approval("/b/N", "quillmoss")},
             std::pair{"OWN", approval(executable, "quillmoss")},
             std::pair{"TURN_PROBE", turnEnd(executable, Variant::probe)},
             std::pair{"TURN_MOVED", turnEnd("/b/N", Variant::normal)},
             std::pair{"TURN", turnEnd(executable, Variant::normal)},
         })
        for (auto at = text.find(word); at != text.npos; at = text.find(word))
            text.replace(at, std::string_view(word).size(), replacement);
    return text;
}

// A change of the file at this path; the backup's path.
using SettingsChange = std::string (*)(const std::string& url, const FileSystem& files);

inline std::string installOwn(const std::string& url, const FileSystem& files = FileSystem::real())
{
    return HookInstaller(files).install(
        url, ownExecutable, "quillmoss", HookInstaller::InterceptBash::no);
}

inline std::string uninstallOwn(
    const std::string& url, const FileSystem& files = FileSystem::real())
{
    return HookInstaller(files).uninstall(url);
}

} // namespace notch
