// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/FileSystem.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "Services/FileManager.h"
#include "SettingsView/HookFlow.h"

#include <cerrno>
#include <optional>
#include <string>

namespace notch {

// The settings' surroundings in a made-up account that holds no file: nothing of the real one is
// read, named or changed. The queue is borrowed.
struct EmptyHome {
    struct NoFiles final : FileSystem {
        int openat(int, const char*, int, mode_t) const override
        {
            errno = ENOENT;
            return -1;
        }
    };
    struct NoFileManager final : FileManager {
        void showItem(const std::string&) override { }
    };

    HookFlow::Surroundings surroundings(MainQueue& mainQueue)
    {
        return {
            .mainQueue = mainQueue,
            .fileManager = fileManager,
            .executableURL = [] { return std::optional<std::string>("/usr/bin/QuillMossNotch"); },
            .settingsURL =
                [](QuillMossProfile profile) {
                    return profile == QuillMossProfile::quillmossAI
                             ? "~/.quillmoss-ai/settings.json"
                             : "~/.quillmoss/settings.json";
                },
            .files = files,
        };
    }

    NoFiles files;
    NoFileManager fileManager;
};

} // namespace notch
