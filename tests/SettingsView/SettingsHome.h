// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/FakeDependencies.h"
#include "SettingsView/HookFlow.h"
#include "support/SettingsFile.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace notch {

struct FakeFileManager final : FileManager {
    void showItem(const std::string& path) override { shown.push_back(path); }

    std::vector<std::string> shown;
};

// What the settings work on: a started model, and the real installer on a home of its own, where
// "/" is a temporary directory.
struct SettingsHome {
    // The calls with their root moved.
    struct MovedRoot final : FileSystem {
        int open(const char* path, int flags) const override
        {
            if (beforeOpen)
                beforeOpen();
            return FileSystem::open(path == std::string("/") ? root.path().c_str() : path, flags);
        }

        TemporaryDirectory root{std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp"};
        std::function<void()> beforeOpen;
    };

    SettingsHome()
    {
        for (const auto profile : allQuillMossProfiles)
            std::filesystem::create_directories(
                std::filesystem::path(realPath(profile)).parent_path());
        model.start();
        fakes.calls.clear();
    }

    static std::string url(QuillMossProfile profile)
    {
        const bool first = profile == QuillMossProfile::quillmoss;
        return std::string("/home/lin/") + (first ? ".quillmoss" : ".quillmoss-ai")
             + "/settings.json";
    }
    std::string realPath(QuillMossProfile profile) const
    {
        return files.root.path() + url(profile);
    }
    void write(const std::string& text, QuillMossProfile profile = QuillMossProfile::quillmoss)
    {
        std::ofstream(realPath(profile), std::ios::binary) << text;
    }
    std::string text(QuillMossProfile profile = QuillMossProfile::quillmoss) const
    {
        return SettingsFile::textOf(realPath(profile));
    }

    HookFlow::Surroundings surroundings()
    {
        return {
            .mainQueue = fakes.time,
            .fileManager = fileManager,
            .executableURL = [this] { return executable; },
            .settingsURL = url,
            .files = files,
        };
    }

    FakeDependencies fakes;
    AppModel model{fakes.seams()};
    MovedRoot files;
    FakeFileManager fileManager;
    std::optional<std::string> executable{ownExecutable};
};

} // namespace notch
