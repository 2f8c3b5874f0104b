// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/HookFlow.h"

#include <utility>

namespace notch {
namespace {

using InterceptBash = HookInstaller::InterceptBash;
using Variant = HookInstaller::CompletionVariant;

constexpr auto unreadable = "配置无法读取。已刷新状态，请检查后重试。";
constexpr auto installFailed = "安装失败：";
constexpr auto removed = "本应用接入已移除。请重新启动 QuillMoss。";
constexpr auto removeFailed = "移除失败：";
constexpr auto turnEndInstalled =
    "已接入并开启结束提醒。请等待接入后新一轮的开始与结束；当前已完成任务不补弹。";
constexpr auto turnEndRemoved = "已移除结束提醒接入，审批接入保持不变。";
constexpr auto turnEndUnchanged = "结束提醒配置未更改：";

std::string installed(QuillMossProfile profile)
{
    return "配置已安装到 " + std::string(displayName(profile))
         + "。请重启 QuillMoss；尚不代表已收到 Hook。";
}

} // namespace

HookFlow::HookFlow(AppModel& model, ConfirmDialog& dialog, Surroundings surroundings)
    : model_(model)
    , dialog_(dialog)
    , surroundings_(std::move(surroundings))
    , installer_(surroundings_.files)
{
    state_.settingsURL = surroundings_.settingsURL(state_.profile);
}

HookFlow::~HookFlow() = default;

void HookFlow::tell() const
{
    if (changed_)
        changed_();
}

// Reading

void HookFlow::appeared()
{
    model_.refreshCompletionHookInstalled();
    refresh();
}

void HookFlow::refresh()
{
    inspect();
    tell();
}

void HookFlow::inspect()
{
    const auto executable = surroundings_.executableURL();
    state_.hasExecutable = executable.has_value();
    state_.settingsURL = surroundings_.settingsURL(state_.profile);
    state_.configuration = SettingsHookConfiguration::inspect(
        state_.settingsURL, executable.value_or(""), state_.profile, surroundings_.files);
}

void HookFlow::choose(QuillMossProfile profile)
{
    if (profile == state_.profile)
        return;
    state_.profile = profile;
    state_.result.clear();
    state_.backupURL.reset();
    refresh();
}

// Asking

void HookFlow::ask(const ConfirmQuestion& question, std::function<void()> confirmed)
{
    asking_ = true;
    dialog_.ask(
        question, [weak = std::weak_ptr(self_), confirmed = std::move(confirmed)](auto answer) {
            const auto self = weak.lock();
            if (!self)
                return;
            (*self)->asking_ = false;
            if (answer == ConfirmDialog::Answer::confirmed)
                confirmed();
        });
}

// What came of it

void HookFlow::succeed(const std::string& result, const std::string& backup)
{
    ++state_.ended;
    state_.result = result;
    state_.operationFailed = false;
    state_.backupURL = backup;
}

void HookFlow::fail(const std::string& result)
{
    ++state_.ended;
    state_.result = result;
    state_.operationFailed = true;
    state_.backupURL.reset();
}

void HookFlow::lookAgain()
{
    model_.refreshConfiguredProfiles();
    refresh();
}

void HookFlow::carryOut(const Operation& operation, const std::string& done, const char* failed)
{
    try {
        succeed(done, operation());
    } catch (const HookInstaller::Failure& failure) {
        fail(failed + failure.message);
    }
    lookAgain();
}

// The approval hook

void HookFlow::install()
{
    const auto executable = surroundings_.executableURL();
    if (!executable || asking_)
        return;
    inspect();
    if (!state_.configuration.interceptBash) {
        fail(unreadable); // No dialog opens on a file that cannot be read.
        tell();
        return;
    }
    const Target target{state_.profile, state_.settingsURL, *executable};
    try {
        auto preview = installer_.preview(
            target.settingsURL, target.executableURL, rawValue(target.profile), InterceptBash::no);
        tell();
        ask(installQuestion(target.profile, std::move(preview)),
            [this, target] { confirmedInstall(target); });
    } catch (const HookInstaller::Failure& failure) {
        fail(installFailed + failure.message);
        lookAgain();
    }
}

void HookFlow::confirmedInstall(const Target& target)
{
    carryOut(
        [&] {
            return installer_.install(target.settingsURL, target.executableURL,
                rawValue(target.profile), InterceptBash::no);
        },
        installed(target.profile), installFailed);
}

void HookFlow::remove()
{
    if (asking_)
        return;
    const Target target{state_.profile, surroundings_.settingsURL(state_.profile), {}};
    ask(removeQuestion(target.profile), [this, target] { confirmedRemove(target); });
}

void HookFlow::confirmedRemove(const Target& target)
{
    carryOut([&] { return installer_.uninstall(target.settingsURL); }, removed, removeFailed);
}

// The turn-end hooks

void HookFlow::changeTurnEnd(TurnEndChange change)
{
    const auto executable = surroundings_.executableURL();
    if (!executable || state_.busy || asking_)
        return;
    constexpr auto profile = QuillMossProfile::quillmoss;
    const Target target{profile, surroundings_.settingsURL(profile), *executable};
    ask(turnEndQuestion(change), [this, change, target] { confirmedTurnEnd(change, target); });
}

void HookFlow::confirmedTurnEnd(TurnEndChange change, const Target& target)
{
    state_.busy = true;
    tell();
    // The installer holds nothing but its file system; a copy keeps the worker off this object.
    const auto work = [installer = installer_, change, target] {
        return change == TurnEndChange::removal ? installer.uninstallCompletion(target.settingsURL)
                                                : installer.installCompletion(target.settingsURL,
                                                    target.executableURL, Variant::normal);
    };
    const auto report = [&queue = surroundings_.mainQueue, weak = std::weak_ptr(self_)](
                            std::function<void(HookFlow&)> outcome) {
        queue.post([weak, outcome = std::move(outcome)] {
            if (const auto self = weak.lock())
                outcome(**self);
        });
    };
    worker_ = std::jthread([work, report, change] {
        try {
            report(
                [change, backup = work()](HookFlow& flow) { flow.turnEndChanged(change, backup); });
        } catch (const HookInstaller::Failure& failure) {
            report([message = failure.message](HookFlow& flow) { flow.turnEndFailed(message); });
        }
    });
}

void HookFlow::turnEndChanged(TurnEndChange change, const std::string& backup)
{
    const bool removal = change == TurnEndChange::removal;
    state_.busy = false;
    setFeature(!removal);
    succeed(removal ? turnEndRemoved : turnEndInstalled, backup);
    tell();
}

void HookFlow::turnEndFailed(const std::string& message)
{
    state_.busy = false;
    fail(turnEndUnchanged + message);
    tell();
}

// A flipped switch makes the model look at the hooks, too.
void HookFlow::setFeature(bool on)
{
    constexpr auto feature = Preference::completionRemindersEnabled;
    if (model_.state().switches.isOn(feature) == on)
        model_.refreshCompletionHookInstalled();
    else
        model_.setPreference(feature, on);
}

// Elsewhere

void HookFlow::showBackup()
{
    if (state_.backupURL)
        surroundings_.fileManager.showItem(*state_.backupURL);
}

void HookFlow::openHost()
{
    model_.openHost(std::string(rawValue(state_.profile)));
}

} // namespace notch
