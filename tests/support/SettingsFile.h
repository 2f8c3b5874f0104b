// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/HookInstaller.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace notch {

// A host's settings directory with or without its file.
//
//   SettingsFile settings("{}");
//   HookInstaller().install(settings.url(), …);
//   EXPECT_EQ(settings.text(), …);
class SettingsFile {
public:
    SettingsFile() { std::filesystem::create_directory(directory()); }
    explicit SettingsFile(const std::string& text)
        : SettingsFile()
    {
        write(text);
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
    // What stands in the directory, but for the lock and the backups.
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
        std::ranges::sort(found);
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

} // namespace notch
