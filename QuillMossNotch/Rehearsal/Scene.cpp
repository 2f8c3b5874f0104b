// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/Scene.h"

#include "Foundation/Json.h"

#include <vector>

namespace notch {
namespace {

ApprovalRequest edit(ApprovalRequest request)
{
    request.toolName = "Edit";
    request.toolInputJSON = R"({"file":"a"})";
    request.source = "quillmossai";
    request.sessionID = "会话一二三四五六七八九十百千";
    return request;
}

ApprovalRequest empty(ApprovalRequest request)
{
    request.toolInputJSON = "{}";
    request.source = "quillmossAI";
    request.sessionID.clear();
    request.cwd = " ";
    return request;
}

// Nothing of this may push, cover or imitate anything beside it.
ApprovalRequest longTexts(ApprovalRequest request)
{
    std::string command = "find . -name '*.tmp' \u202E -delete # שלום";
    for (int line = 0; line < 12; ++line)
        command += "\n删除 " + std::string(60, 'x');
    request.toolName = "mcp__" + std::string(80, 'W');
    request.cwd = "/home/lin/" + std::string(90, 'p') + "/moss-garden";
    request.sessionID = "<b>允许</b>\n" + request.sessionID;
    request.toolInputJSON =
        Json(Json::Object{{"command", command}, {"description", command}}).pretty();
    return request;
}

// In the host's own window, where it waits without end.
ApprovalRequest card(ApprovalRequest request)
{
    request.eventName = nativeApprovalEventName;
    request.toolName = "原生安全确认";
    request.sessionID = "窗口";
    request.expiresAt = request.expiresAt + Seconds{315360000};
    return request;
}

} // namespace

Scene::Scene()
{
    model.setNotchHeight(8);
    model.setWidths(480, 236);
    operations_["ask"] = [this] { arrive(command(next())); };
    operations_["edit"] = [this] { arrive(edit(command(next()))); };
    operations_["empty"] = [this] { arrive(empty(command(next()))); };
    operations_["long"] = [this] { arrive(longTexts(command(next()))); };
    operations_["card"] = [this] {
        fakes.monitor.callbacks.onRequest(card(command(next())));
        fakes.time.runPosted();
    };
    operations_["question"] = [this] { wait("发布说明写给谁看？"); };
    operations_["longQuestion"] = [this] {
        wait("<b>选哪一个？</b>\u202E\n" + std::string(300, 'q') + "\n一\n二\n三\n四\n五");
    };
    operations_["command"] = [this] { model.setShowAllParameters(false); };
    operations_["trusted"] = [this] { fakes.monitor.trusted = true; };
    operations_["unreachable"] = [this] {
        fakes.server.callbacks.onUnreachable();
        fakes.time.runPosted();
    };
    operations_["editions"] = [this] {
        fakes.profiles = {"QuillMoss", "QuillMoss AI"};
        fakes.profiles->resize(next<std::size_t>());
        model.refreshConfiguredProfiles();
    };
}

ApprovalRequest Scene::command(const std::string& id) const
{
    auto request = fakes.hookRequest(id);
    request.sessionID = "7c1f0a52-93be-4d0e-8a77-2f5d1c0b9e64";
    request.cwd = "/home/lin/Projects/moss-garden";
    request.toolInputJSON = R"({"command":"rm -rf build && cmake --preset release\ncmake --build )"
                            R"(--preset release","description":"清理旧的构建目录，)"
                            R"(再完整构建一次","timeout":120000})";
    return request;
}

void Scene::arrive(const ApprovalRequest& request)
{
    fakes.server.callbacks.onRequest(request);
    fakes.time.runPosted();
}

void Scene::wait(const std::string& title)
{
    auto question = FakeDependencies::question("Q");
    question.title = title;
    fakes.see(question);
    fakes.see(question);
}

} // namespace notch
