// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/HookFlow.h"
#include "Rehearsal/TracePlayer.h"
#include "SettingsView/SettingsHome.h"
#include "SettingsView/StatusContent.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <map>
#include <mutex>

namespace notch {
namespace {

// A person who answers when told to.
struct ScriptedDialog final : ConfirmDialog {
    void ask(const ConfirmQuestion& given, std::function<void(Answer)> then) override
    {
        question = given;
        answered = std::move(then);
    }
    void answer(Answer given)
    {
        question.reset();
        std::exchange(answered, nullptr)(given);
    }

    std::optional<ConfirmQuestion> question;
    std::function<void(Answer)> answered;
};

// The language of these traces. After each line: what the window says of the file and of the last
// change, the dialog's title while one asks, and by its name below what the file holds.
//
//   file legacy, install | installed with interception; asks 安装 / 更新 QuillMoss 接入？; file
//   legacy
class HookFlowTest : public testing::Test, protected SettingsHome, protected TracePlayer {
protected:
    HookFlowTest()
    {
        operations_ = {
            {"file", [this] { write(texts_.at(next())); }},
            {"moved", [this] { executable = "/b/N"; }},
            {"deleted", [this] { executable.reset(); }},
            {"appear", [this] { flow.appeared(); }},
            {"choose", [this] { flow.choose(parseQuillMossProfile(next()).value()); }},
            {"install", [this] { flow.install(); }},
            {"remove", [this] { flow.remove(); }},
            {"installTurnEnds", [this] { flow.changeTurnEnd(TurnEndChange::install); }},
            {"removeTurnEnds", [this] { flow.changeTurnEnd(TurnEndChange::removal); }},
            {"confirm", [this] { dialog.answer(ConfirmDialog::Answer::confirmed); }},
            {"cancel", [this] { dialog.answer(ConfirmDialog::Answer::cancelled); }},
            {"finish", [this] { finish(); }},
        };
    }

    void expectTrace(std::string_view trace) { EXPECT_EQ(played(trace), trace); }

    ScriptedDialog dialog;
    HookFlow flow{model, dialog, surroundings()};

private:
    void finish()
    {
        EXPECT_TRUE(waitUntil([this] {
            fakes.time.runPosted();
            return !flow.state().busy;
        }));
    }

    std::string fileText() const
    {
        const auto held = text(flow.state().profile);
        for (const auto& [name, text] : texts_) {
            if (text == held)
                return name;
        }
        return held;
    }

    std::string stateText() override
    {
        const auto& state = flow.state();
        const ConfigurationStatus status(state);
        std::string told(status.line.text);
        told += status.warnsOfInterception ? " with interception" : "";
        told += status.canInstall ? "" : ", no install";
        told += state.busy ? ", busy" : "";
        told += dialog.question ? "; asks " + dialog.question->title : "";
        if (!state.result.empty())
            told += (state.operationFailed ? "; failed: " : "; done: ") + state.result;
        told += state.backupURL ? " +backup" : "";
        return told + "; file " + fileText();
    }

    // What the files of these tests hold, by name; the last ones are what the installer makes of
    // an empty file, in order.
    const std::map<std::string, std::string> texts_{
        {"none", ""},
        {"broken", "{"},
        {"foreign", "{\n  \"theme\" : \"dark\"\n}\n"},
        {"edited",
            withOwnEntries(R"({"hooks":{"PermissionRequest":[{"hooks":[{OWN,"note":1}]}]}})")},
        {"legacy", withOwnEntries(R"({"theme":"dark","hooks":{"PreToolUse":[{"matcher":"Bash",)"
                                  R"("hooks":[{OWN}]}]}})")},
        {"connected", made([](const auto& url) { installOwn(url); })},
        {"turn-ends", made([](const auto& url) {
             HookInstaller().installCompletion(
                 url, ownExecutable, HookInstaller::CompletionVariant::normal);
         })},
    };

    template <class Change> static std::string made(const Change& change)
    {
        const SettingsFile file("{\n  \"theme\" : \"dark\"\n}\n");
        change(file.url());
        return file.text();
    }
};

TEST_F(HookFlowTest, changesTheFileOnlyWhenThePersonConfirms)
{
    expectTrace(R"(file legacy, appear | 本应用 Hook：配置需检查 with interception; file legacy
install | 本应用 Hook：配置需检查 with interception; asks 安装 / 更新 QuillMoss 接入？; file legacy
cancel | 本应用 Hook：配置需检查 with interception; file legacy
install, install, confirm | 本应用 Hook：配置已安装; done: 配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。 +backup; file connected
remove | 本应用 Hook：配置已安装; asks 移除 QuillMoss 的刘海审批 Hook？; done: 配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。 +backup; file connected
cancel | 本应用 Hook：配置已安装; done: 配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。 +backup; file connected
remove, confirm | 本应用 Hook：未安装; done: 本应用接入已移除。请重新启动 QuillMoss。 +backup; file foreign
choose quillmossAI | 本应用 Hook：未安装; file none
install | 本应用 Hook：未安装; asks 安装 / 更新 QuillMoss AI 接入？; file none
)");
}

TEST_F(HookFlowTest, saysWhyItChangedNothing)
{
    expectTrace(
        R"(file foreign, appear, file broken, install | 配置错误 / 无法读取, no install; failed: 配置无法读取。已刷新状态，请检查后重试。; file broken
file edited, install, confirm | 本应用 Hook：配置需检查; failed: 安装失败：本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。; file edited
remove, confirm | 本应用 Hook：配置需检查; failed: 移除失败：本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。; file edited
file broken, installTurnEnds, confirm, finish | 本应用 Hook：配置需检查; failed: 结束提醒配置未更改：配置必须是合法 JSON 对象；未修改文件。; file broken
file connected, moved, appear | 本应用 Hook：路径需重连; failed: 结束提醒配置未更改：配置必须是合法 JSON 对象；未修改文件。; file connected
deleted, appear, install | 配置错误 / 无法读取, no install; failed: 结束提醒配置未更改：配置必须是合法 JSON 对象；未修改文件。; file connected
)");
    EXPECT_FALSE(model.state().switches.isOn(Preference::completionRemindersEnabled));
}

TEST_F(HookFlowTest, turnEndsAreOfTheFirstEditionAndFlipTheSwitch)
{
    const auto isOn = [this] {
        return model.state().switches.isOn(Preference::completionRemindersEnabled);
    };
    expectTrace(
        R"(file foreign, choose quillmossAI, installTurnEnds, cancel | 本应用 Hook：未安装; file none
installTurnEnds, confirm, finish | 本应用 Hook：未安装; done: 已接入并开启结束提醒。请等待接入后新一轮的开始与结束；当前已完成任务不补弹。 +backup; file none
choose quillmoss | 本应用 Hook：未安装; file turn-ends
)");
    EXPECT_TRUE(isOn());
    expectTrace(
        R"(removeTurnEnds, confirm, finish | 本应用 Hook：未安装; done: 已移除结束提醒接入，审批接入保持不变。 +backup; file foreign
)");
    EXPECT_FALSE(isOn());
}

TEST_F(HookFlowTest, aSlowChangeKeepsTheWindowAliveAndIsMadeOnce)
{
    std::mutex disk; // Held: the disk does not answer.
    std::unique_lock slow(disk);
    const auto mainThread = std::this_thread::get_id();
    files.beforeOpen = [&] {
        if (std::this_thread::get_id() != mainThread)
            const std::scoped_lock answer(disk);
    };
    expectTrace(
        R"(file foreign, installTurnEnds, confirm, installTurnEnds, removeTurnEnds, appear | 本应用 Hook：未安装, busy; file foreign
)");
    slow.unlock();
    expectTrace(
        R"(finish | 本应用 Hook：未安装; done: 已接入并开启结束提醒。请等待接入后新一轮的开始与结束；当前已完成任务不补弹。 +backup; file turn-ends
)");
    EXPECT_FALSE(dialog.question);
}

TEST_F(HookFlowTest, tellsTheModelAndShowsTheBackup)
{
    flow.showBackup();
    fakes.profiles = {"QuillMoss", "QuillMoss AI"};
    play("file foreign, install");
    EXPECT_EQ(dialog.question->preview,
        HookInstaller(files).preview(url(QuillMossProfile::quillmoss), ownExecutable, "quillmoss",
            HookInstaller::InterceptBash::no));
    play("confirm");
    EXPECT_EQ(model.state().configuredProfiles.size(), 2U);
    flow.showBackup();
    EXPECT_EQ(fileManager.shown, std::vector{*flow.state().backupURL});
    fakes.profiles->clear();
    play("remove, confirm, choose quillmossAI");
    EXPECT_TRUE(model.state().configuredProfiles.empty());
    flow.openHost();
    EXPECT_EQ(fakes.takeCalls("open"), Calls{"open quillmossAI"});
}

} // namespace
} // namespace notch
