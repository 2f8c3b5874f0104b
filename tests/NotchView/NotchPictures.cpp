// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// NotchPictures FOLDER: writes a picture of each state of the notch into the folder.

#include "NotchView/NotchPicture.h"
#include "Scene.h"

#include <QApplication>
#include <QImage>

#include <array>
#include <cstdio>

namespace notch {
namespace {

struct Picture {
    const char* name;
    const char* words;
};

constexpr std::array pictures{
    Picture{"compact", ""},
    Picture{"compact-pending", "hook close"},
    Picture{"approval", "hook 0.5"},
    Picture{"approval-arming", "hook"},
    Picture{"approval-last-seconds", "hook 40.5"},
    Picture{"details", "hook 0.5 details"},
    Picture{"approval-long", "long 0.5"},
    Picture{"switcher", "hook 0.5 edit 0.5 hook 0.5"},
    Picture{"receipt-allowed", "hook 0.5 allow"},
    Picture{"receipt-denied", "hook edit hook 0.5 deny"},
    Picture{"receipt-returned", "hook 0.5 return"},
    Picture{"receipt-expired", "hook 50.5 gone"},
    Picture{"receipt-unavailable", "hook 0.5 gone"},
    Picture{"idle", "unconnected open"},
    Picture{"idle-connected", "open"},
    Picture{"demo-hook", "demo 0.5"},
    Picture{"demo-native", "demo-card 0.5"},
};

bool write(const Picture& picture, const QString& folder)
{
    Scene scene;
    scene.play(picture.words);
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
