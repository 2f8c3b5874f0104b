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
    std::vector<const char*> clicks = {}; // A dialog that is then open is the picture.
    bool scrolled = true; // To the end.
    bool dark = false;
    bool looks = true; // At the file.
};

std::string group(const std::string& hook)
{
    return R"({"hooks":{"PermissionRequest":[{"hooks":[{)" + hook + R"(}]}]}})";
}

const std::string legacy = R"({"hooks":{"PreToolUse":[{"matcher":"Bash","hooks":[{OWN}]}],)"
                           R"("PermissionRequest":[{"hooks":[{OWN}]}]}})";

const std::vector<Picture> pictures{
    {.name = "settings-checking", .file = "{}", .looks = false},
    {.name = "settings-missing", .file = "{}"},
    {.name = "settings-installed",
        .file = "{}",
        .clicks = {"settings-install", "settings-confirm-yes"}},
    {.name = "settings-reconnect", .file = group("OWN_MOVED")},
    {.name = "settings-review", .file = group("OWN,\"note\":1")},
    {.name = "settings-invalid",
        .file = "{",
        .clicks = {"settings-remove", "settings-confirm-yes"}},
    {.name = "settings-interception", .file = legacy, .dark = true},
    {.name = "settings-confirm", .file = "{}", .clicks = {"settings-install"}},
    {.name = "settings-dark", .file = "{}", .scrolled = false, .dark = true},
};

QImage taken(const Picture& picture)
{
    SettingsHome home;
    home.write(withOwnEntries(picture.file));
    SettingsPage page(home.model, home.surroundings());
    page.resize(600, 680);
    page.show();
    if (picture.looks)
        page.lookAgain();
    for (const auto* const button : picture.clicks)
        page.findChild<QPushButton*>(QLatin1String(button))->click();
    if (picture.looks)
        QApplication::processEvents();
    if (auto* const dialog = page.findChild<QDialog*>(); dialog && dialog->isVisible())
        return pictureOf(*dialog);
    auto& bar = *page.findChild<QScrollArea*>()->verticalScrollBar();
    bar.setValue(picture.scrolled ? bar.maximum() : 0);
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
