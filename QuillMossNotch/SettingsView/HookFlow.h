// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Foundation/MainQueue.h"
#include "HookConfiguration/FileSystem.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "HookConfiguration/SettingsHookConfiguration.h"
#include "Services/FileManager.h"
#include "SettingsView/ConfirmDialog.h"
#include "SettingsView/HookQuestions.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace notch {

// What the settings window shows of the host's file and of the last change to it.
struct HookFlowState {
    QuillMossProfile profile = QuillMossProfile::quillmoss; // The edition shown.
    std::string settingsURL; // Its file.
    SettingsHookConfiguration configuration;
    bool hasExecutable = false; // This program's own path is known, so that it can be installed.
    std::string result; // Of the last change; empty: none since the edition was chosen.
    bool operationFailed = false;
    std::optional<std::string> backupURL; // Made by the last change.
    int ended = 0; // Changes so far: two with the same result are two.
    bool busy = false; // A change of the turn-end hooks is under way.

    bool operator==(const HookFlowState&) const = default;
};

// The settings window's operations on the host's file, without the window. Each change is asked
// about first and happens only when the person confirms; until then the file is only read. A change
// of the turn-end hooks runs on a thread of its own and reports to the main queue, whether or not
// the window is still there. Main thread.
class HookFlow {
public:
    // The files and the desktop. What is borrowed must outlive the flow.
    struct Surroundings {
        MainQueue& mainQueue;
        FileManager& fileManager;
        std::function<std::optional<std::string>()> executableURL;
        std::function<std::string(QuillMossProfile)> settingsURL;
        const FileSystem& files = FileSystem::real();
    };

    // Model and dialog are borrowed and must outlive the flow.
    HookFlow(AppModel& model, ConfirmDialog& dialog, Surroundings surroundings);
    ~HookFlow(); // Waits for a change that is under way.
    HookFlow(const HookFlow&) = delete;
    HookFlow& operator=(const HookFlow&) = delete;

    const HookFlowState& state() const { return state_; }
    // `changed` runs after each operation that may have changed the state. One subscriber.
    void subscribe(std::function<void()> changed) { changed_ = std::move(changed); }

    // The window has come to the screen: the files may have changed since.
    void appeared();
    // Reads the file of the edition shown.
    void refresh();
    void choose(QuillMossProfile profile);

    // The approval hook of the edition shown.
    void install();
    void remove();
    // The turn-end hooks, always of the first edition.
    void changeTurnEnd(TurnEndChange change);

    void showBackup();
    void openHost();

private:
    // What a change is about, as it was when the person was asked.
    struct Target {
        QuillMossProfile profile{};
        std::string settingsURL;
        std::string executableURL;
    };
    using Operation = std::function<std::string()>; // The backup's path, or HookInstaller::Failure.

    void inspect();
    void ask(const ConfirmQuestion& question, std::function<void()> confirmed);
    void confirmedInstall(const Target& target);
    void confirmedRemove(const Target& target);
    void confirmedTurnEnd(TurnEndChange change, const Target& target);
    void turnEndChanged(TurnEndChange change, const std::string& backup);
    void turnEndFailed(const std::string& message);
    void setFeature(bool on);
    // Carries the operation out here and stores what came of it; then looks at the file again.
    void carryOut(const Operation& operation, const std::string& done, const char* failed);
    void succeed(const std::string& result, const std::string& backup);
    void fail(const std::string& result);
    void lookAgain();
    void tell() const;

    AppModel& model_;
    ConfirmDialog& dialog_;
    Surroundings surroundings_;
    HookInstaller installer_;
    HookFlowState state_;
    std::function<void()> changed_;
    bool asking_ = false; // A dialog is open; no second one opens.
    std::shared_ptr<HookFlow*> self_ = std::make_shared<HookFlow*>(this);
    std::jthread worker_;
};

} // namespace notch
