// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Scene.h"

#include "Foundation/Json.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>
#include <vector>

namespace notch {
namespace {

void arriveWith(
    Scene& scene, const char* tool, const char* input, const char* source, const char* session)
{
    auto request = scene.command();
    request.toolName = tool;
    request.toolInputJSON = input;
    request.source = source;
    request.sessionID = session;
    scene.arrive(request);
}

// Nothing of this may push, cover or imitate anything beside it.
void arriveWithLongTexts(Scene& scene)
{
    auto request = scene.command();
    std::string command = "find . -name '*.tmp' \u202E -delete # שלום";
    for (int line = 0; line < 12; ++line)
        command += "\n删除 " + std::string(60, 'x');
    request.toolName = "mcp__" + std::string(80, 'W');
    request.cwd = "/home/lin/" + std::string(90, 'p') + "/moss-garden";
    request.sessionID = "<b>允许</b>\n" + request.sessionID;
    request.toolInputJSON =
        Json(Json::Object{{"command", command}, {"description", command}}).pretty();
    scene.arrive(request);
}

// In the host's own window, where it waits without end.
void showCard(Scene& scene)
{
    auto card = scene.command();
    card.eventName = nativeApprovalEventName;
    card.toolName = "原生安全确认";
    card.sessionID = "窗口";
    card.expiresAt = card.expiresAt + Seconds{315360000};
    scene.outside.monitor.callbacks.onRequest(card);
}

void decide(Scene& scene, Decision decision)
{
    scene.model.decide(ApprovalRequest(*scene.model.state().interaction.current()), decision);
}

void connect(Scene& scene, std::vector<std::string> editions)
{
    scene.outside.profiles = std::move(editions);
    scene.model.refreshConfiguredProfiles();
}

struct Word {
    std::string_view name;
    void (*play)(Scene&);
};

constexpr std::array dictionary{
    Word{"hook", [](Scene& it) { it.arrive(it.command()); }},
    Word{"edit",
        [](Scene& it) {
            arriveWith(
                it, "Edit", R"({"file":"a"})", "quillmossai", "会话一二三四五六七八九十百千");
        }},
    Word{"empty", [](Scene& it) { arriveWith(it, "Bash", "{}", "quillmossAI", ""); }},
    Word{"long", arriveWithLongTexts},
    Word{"card", showCard},
    Word{"changed", [](Scene& it) { it.outside.monitor.cardVerifies = false; }},
    Word{"gone", [](Scene& it) { it.outside.remove("A"); }},
    Word{"allow", [](Scene& it) { decide(it, Decision::allow); }},
    Word{"deny", [](Scene& it) { decide(it, Decision::deny); }},
    Word{"return", [](Scene& it) { decide(it, Decision::passthrough); }},
    Word{"demo", [](Scene& it) { it.model.showDemo(Demo::hook); }},
    Word{"demo-card", [](Scene& it) { it.model.showDemo(Demo::native); }},
    Word{"open", [](Scene& it) { it.model.expand(); }},
    Word{"close", [](Scene& it) { it.model.collapse(); }},
    Word{"next", [](Scene& it) { it.model.selectAdjacent(1); }},
    Word{"copy", [](Scene& it) { it.model.copyRequest(*it.model.state().interaction.current()); }},
    Word{"details", [](Scene& it) { it.model.setShowAllParameters(true); }},
    Word{"question", [](Scene& it) { it.outside.reminders.question = true; }},
    Word{"turn-end", [](Scene& it) { it.outside.reminders.completion = true; }},
    Word{"unreachable", [](Scene& it) { it.outside.server.callbacks.onUnreachable(); }},
    Word{"unconnected", [](Scene& it) { connect(it, {}); }},
    Word{"editions",
        [](Scene& it) {
            connect(it, {"QuillMoss", "QuillMoss AI"});
        }},
    Word{"trusted",
        [](Scene& it) {
            it.outside.monitor.trusted = true;
            it.model.refreshNativeMonitoring();
        }},
};

// Otherwise a preference that is switched over, or seconds that pass.
void playWord(Scene& scene, const std::string& word)
{
    const auto* const known = std::ranges::find(dictionary, word, &Word::name);
    const auto* const preference =
        std::ranges::find(allPreferences, word, [](Preference one) { return name(one); });
    if (known != dictionary.end())
        known->play(scene);
    else if (preference != allPreferences.end())
        scene.outside.preferences.set(*preference, !scene.outside.preferences.isOn(*preference));
    else
        scene.outside.time.advance(Seconds{std::stod(word)});
}

} // namespace

Scene::Scene()
{
    model.setNotchHeight(8);
    model.setWidths(480, 236);
    model.start();
    outside.time.runPosted();
}

void Scene::play(std::string_view words)
{
    std::istringstream stream{std::string(words)};
    for (std::string word; stream >> word; outside.time.runPosted())
        playWord(*this, word);
}

ApprovalRequest Scene::command()
{
    auto request = outside.hookRequest(std::string(1, ++lastID));
    request.sessionID = "7c1f0a52-93be-4d0e-8a77-2f5d1c0b9e64";
    request.cwd = "/home/lin/Projects/moss-garden";
    request.toolInputJSON = R"({"command":"rm -rf build && cmake --preset release\ncmake --build )"
                            R"(--preset release","description":"清理旧的构建目录，)"
                            R"(再完整构建一次","timeout":120000})";
    return request;
}

void Scene::arrive(const ApprovalRequest& request)
{
    outside.server.callbacks.onRequest(request);
    outside.time.runPosted();
}

ShownScene::ShownScene()
{
    model.subscribe([this] { layOut(); });
    layOut();
    view.show();
    outside.takeCalls();
}

void ShownScene::layOut()
{
    view.refresh();
    view.resize(480, view.fittingHeight(480));
}

std::string ShownScene::text(const char* name) const
{
    return find(name).property("text").toString().toStdString();
}

} // namespace notch
