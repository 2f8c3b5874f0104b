// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Preferences/SettingsPreferences.h"

#include <QStandardPaths>

namespace notch {

using namespace Qt::StringLiterals;

namespace {

QString key(Preference preference)
{
    const auto text = name(preference);
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

SettingsPreferences::SettingsPreferences(const QString& file)
    : settings_(file, QSettings::IniFormat)
{
}

QString SettingsPreferences::defaultFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
         + "/local.quillmoss.notch.ini"_L1;
}

bool SettingsPreferences::isOn(Preference preference) const
{
    // QVariant would take every text but "false" and "0" for true.
    const auto text = settings_.value(key(preference)).toString();
    if (text == "true"_L1)
        return true;
    return text != "false"_L1 && defaultValue(preference);
}

void SettingsPreferences::set(Preference preference, bool on)
{
    settings_.setValue(key(preference), on);
    settings_.sync(); // A choice must survive a crash a moment later.
}

} // namespace notch
