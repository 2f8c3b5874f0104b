// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsPictures.h"

#include "Preview/NotchPicture.h"
#include "SettingsView/SettingsHome.h"
#include "SettingsView/SettingsPage.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace notch {
namespace {

// As desktops have it in their dark themes.
QPalette darkPalette()
{
    QPalette dark(QColor(0x2D, 0x2D, 0x30), QColor(0x26, 0x26, 0x28));
    dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x20));
    dark.setColor(QPalette::Highlight, QColor(0x3D, 0x7E, 0xD0));
    return dark;
}

struct Picture {
    const char* name;
    std::string file; // In the words of withOwnEntries().
    enum class Part { top, bottom, dialog } part = Part::bottom;
    const char* click = ""; // A button, and then the dialog's first one.
    bool dark = false;
};

std::string group(const std::string& hook)
{
    return R"({"hooks":{"PermissionRequest":[{"hooks":[{)" + hook + R"(}]}]}})";
}

const std::string legacy = R"({"hooks":{"PreToolUse":[{"matcher":"Bash","hooks":[{OWN}]}],)"
                           R"("PermissionRequest":[{"hooks":[{OWN}]}]}})";

const std::vector<Picture> pictures{
    {.name = "settings", .file = "{}", .part = Picture::Part::top},
    {.name = "settings-missing", .file = "{}"},
    {.name = "settings-installed", .file = "{}", .click = "settings-install"},
    {.name = "settings-reconnect", .file = group("OWN_MOVED")},
    {.name = "settings-review", .file = group("OWN,\"note\":1")},
    {.name = "settings-invalid", .file = "{", .click = "settings-remove"},
    {.name = "settings-interception", .file = legacy, .dark = true},
    {.name = "settings-confirm",
        .file = "{}",
        .part = Picture::Part::dialog,
        .click = "settings-install"},
    {.name = "settings-dark", .file = "{}", .part = Picture::Part::top, .dark = true},
};

QImage taken(const Picture& picture)
{
    SettingsHome home;
    home.write(withOwnEntries(picture.file));
    SettingsPage page(home.model, home.surroundings());
    page.resize(600, 680);
    page.show();
    const auto press = [&](const char* name) {
        if (auto* const button = page.findChild<QPushButton*>(QLatin1String(name)))
            button->click();
        QApplication::processEvents();
    };
    press(picture.click);
    if (picture.part == Picture::Part::dialog)
        return pictureOf(*page.findChild<QDialog*>());
    press("settings-confirm-yes");
    auto& bar = *page.findChild<QScrollArea*>()->verticalScrollBar();
    bar.setValue(picture.part == Picture::Part::top ? 0 : bar.maximum());
    return pictureOf(page);
}

} // namespace

bool writeSettingsPictures(const QString& folder)
{
    const auto light = QApplication::palette();
    bool written = true;
    for (const auto& picture : pictures) {
        QApplication::setPalette(picture.dark ? darkPalette() : light);
        const auto path = folder + QLatin1Char('/') + QLatin1String(picture.name);
        written = taken(picture).save(path + QStringLiteral(".png")) && written;
    }
    return written;
}

} // namespace notch
