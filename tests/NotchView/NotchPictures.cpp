// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// NotchPictures FOLDER: writes a picture of each state of the notch into the folder.

#include "Foundation/Json.h"
#include "NotchView/NotchPicture.h"
#include "support/FakeOutside.h"

#include <QApplication>
#include <QImage>

#include <array>
#include <cstdio>

namespace notch {
namespace {

constexpr double panelWidth = 480;
constexpr double compactWidth = 236;

// A model with everything outside made up.
struct Scene {
    FakeOutside outside;
    AppModel model{outside.seams()};

    Scene()
    {
        model.setNotchHeight(8);
        model.setWidths(panelWidth, compactWidth);
        model.start();
        outside.time.runPosted();
    }

    void arrive(ApprovalRequest request)
    {
        outside.server.callbacks.onRequest(std::move(request));
        outside.time.advance(Seconds{0.5});
    }
    ApprovalRequest command(const std::string& id) const
    {
        auto request = outside.hookRequest(id);
        request.sessionID = "7c1f0a52-93be-4d0e-8a77-2f5d1c0b9e64";
        request.cwd = "/home/lin/Projects/moss-garden";
        request.toolInputJSON =
            R"({"command":"rm -rf build && cmake --preset release\ncmake --build )"
            R"(--preset release","description":"清理旧的构建目录，)"
            R"(再完整构建一次","timeout":120000})";
        return request;
    }
    void decideFirst(Decision decision)
    {
        const auto request = *model.state().interaction.current();
        model.decide(request, decision);
    }
};

void showRequest(Scene& scene)
{
    scene.arrive(scene.command("A"));
}

void showDetails(Scene& scene)
{
    showRequest(scene);
    scene.model.setShowAllParameters(true);
}

void showSwitcher(Scene& scene)
{
    showRequest(scene);
    auto edit = scene.command("B");
    edit.toolName = "Edit";
    scene.arrive(edit);
    scene.arrive(scene.command("C"));
}

// Nothing of this may push, cover or imitate anything beside it.
void showLongTexts(Scene& scene)
{
    auto request = scene.command("A");
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

void showAllowed(Scene& scene)
{
    showRequest(scene);
    scene.decideFirst(Decision::allow);
}

void showDenied(Scene& scene)
{
    showSwitcher(scene);
    scene.decideFirst(Decision::deny);
}

void showExpired(Scene& scene)
{
    showRequest(scene);
    scene.outside.time.advance(Seconds{50});
    scene.outside.remove("A");
}

void showUnavailable(Scene& scene)
{
    showRequest(scene);
    scene.outside.remove("A");
}

void showReturned(Scene& scene)
{
    showRequest(scene);
    scene.decideFirst(Decision::passthrough);
}

void showDemo(Scene& scene, Demo demo)
{
    scene.model.showDemo(demo);
    scene.outside.time.advance(Seconds{0.5});
}

void showIdle(Scene& scene)
{
    scene.outside.profiles.emplace();
    scene.model.refreshConfiguredProfiles();
    scene.model.expand();
}

struct Picture {
    const char* name;
    void (*show)(Scene&);
};

constexpr std::array pictures{
    Picture{"compact", [](Scene&) {}},
    Picture{"compact-pending",
        [](Scene& scene) {
            showRequest(scene);
            scene.model.collapse();
        }},
    Picture{"approval", showRequest},
    Picture{"approval-arming",
        [](Scene& scene) {
            scene.outside.server.callbacks.onRequest(scene.command("A"));
            scene.outside.time.runPosted();
        }},
    Picture{"approval-last-seconds",
        [](Scene& scene) {
            showRequest(scene);
            scene.outside.time.advance(Seconds{40});
        }},
    Picture{"details", showDetails},
    Picture{"approval-long", showLongTexts},
    Picture{"switcher", showSwitcher},
    Picture{"receipt-allowed", showAllowed},
    Picture{"receipt-denied", showDenied},
    Picture{"receipt-returned", showReturned},
    Picture{"receipt-expired", showExpired},
    Picture{"receipt-unavailable", showUnavailable},
    Picture{"idle", showIdle},
    Picture{"idle-connected", [](Scene& scene) { scene.model.expand(); }},
    Picture{"demo-hook", [](Scene& scene) { showDemo(scene, Demo::hook); }},
    Picture{"demo-native", [](Scene& scene) { showDemo(scene, Demo::native); }},
};

bool write(const Picture& picture, const QString& folder)
{
    Scene scene;
    picture.show(scene);
    const auto path =
        folder + QLatin1Char('/') + QLatin1String(picture.name) + QStringLiteral(".png");
    return pictureOfNotch(scene.model, scene.outside.preferences, scene.outside.time).save(path);
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("Usage: NotchPictures FOLDER\n", stderr);
        return 2;
    }
    bool written = true;
    for (const auto& picture : notch::pictures)
        written = notch::write(picture, QString::fromLocal8Bit(argv[1])) && written;
    return written ? 0 : 1;
}
