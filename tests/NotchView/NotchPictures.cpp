// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// NotchPictures FOLDER: writes a picture of each state of the notch and of the settings into the
// folder, of those that the program itself does not picture.

#include "Preview/NotchPicture.h"
#include "Rehearsal/Scene.h"
#include "SettingsView/SettingsPictures.h"

#include <QApplication>
#include <QImage>

#include <cstdio>
#include <utility>

namespace notch {
namespace {

// Their names, and the words of their scenes.
constexpr std::pair<const char*, const char*> pictures[]{
    {"compact", ""},
    {"compact-pending", "ask A, close"},
    {"approval", "ask A, wait 0.5"},
    {"approval-arming", "ask A"},
    {"approval-last-seconds", "ask A, wait 40.5"},
    {"details", "ask A, wait 0.5, details"},
    {"approval-long", "long A, wait 0.5"},
    {"switcher", "ask A, wait 0.5, edit B, wait 0.5, ask C, wait 0.5"},
    {"receipt-allowed", "ask A, wait 0.5, allow A"},
    {"receipt-denied", "ask A, edit B, ask C, wait 0.5, deny A"},
    {"receipt-returned", "ask A, wait 0.5, handBack A"},
    {"receipt-expired", "ask A, wait 50.5, gone A"},
    {"receipt-unavailable", "ask A, wait 0.5, gone A"},
    {"question-compact", "question, close"},
    {"completion-failed", "on completionRemindersEnabled, deaf, turn, wait 0.5, openTurn"},
    {"completion-compact", "on completionRemindersEnabled, turn, close"},
    {"idle", "editions 0, open"},
    {"idle-connected", "open"},
};

bool write(const char* name, const char* words, const QString& folder)
{
    Scene scene;
    scene.play(words);
    const auto path = folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
    return pictureOfNotch(scene.model, scene.fakes.time).save(path);
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
    const auto folder = QString::fromLocal8Bit(argv[1]);
    bool written = notch::writeSettingsPictures(folder);
    for (const auto& [name, words] : notch::pictures)
        written = notch::write(name, words, folder) && written;
    return written ? 0 : 1;
}
