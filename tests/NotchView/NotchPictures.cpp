// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// NotchPictures FOLDER: writes a picture of each state of the notch into the folder.

#include "NotchView/NotchPicture.h"
#include "Scene.h"

#include <QApplication>
#include <QImage>

#include <cstdio>
#include <utility>

namespace notch {
namespace {

// Their names, and the words of their scenes.
constexpr std::pair<const char*, const char*> pictures[]{
    {"compact", ""},
    {"compact-pending", "hook close"},
    {"approval", "hook 0.5"},
    {"approval-arming", "hook"},
    {"approval-last-seconds", "hook 40.5"},
    {"details", "hook 0.5 details"},
    {"approval-long", "long 0.5"},
    {"switcher", "hook 0.5 edit 0.5 hook 0.5"},
    {"receipt-allowed", "hook 0.5 allow"},
    {"receipt-denied", "hook edit hook 0.5 deny"},
    {"receipt-returned", "hook 0.5 return"},
    {"receipt-expired", "hook 50.5 gone"},
    {"receipt-unavailable", "hook 0.5 gone"},
    {"idle", "unconnected open"},
    {"idle-connected", "open"},
    {"demo-hook", "demo 0.5"},
    {"demo-native", "demo-card 0.5"},
};

bool write(const char* name, const char* words, const QString& folder)
{
    Scene scene;
    scene.play(words);
    const auto path = folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
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
    for (const auto& [name, words] : notch::pictures)
        written = notch::write(name, words, QString::fromLocal8Bit(argv[1])) && written;
    return written ? 0 : 1;
}
