// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Toolkit/Toolkit.h"

#include "Platform/Toolkit/SessionScale.h"

#include <QFile>
#include <QLoggingCategory>

namespace notch {

using namespace Qt::StringLiterals;

namespace {

// Off the screen no session is needed, nor looked for, and its theme does not matter. Without one
// the toolkit would warn on stderr and make a folder for it.
std::unique_ptr<QTemporaryDir> ownRuntimeFolder(Toolkit::Platform platform)
{
    if (platform != Toolkit::Platform::offscreen)
        return nullptr;
    for (const auto* const preference : {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE"})
        qunsetenv(preference);
    QLoggingCategory::setFilterRules(u"*.warning=false\n*.critical=false"_s);
    auto folder = std::make_unique<QTemporaryDir>();
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder->path()));
    return folder;
}

constexpr const char* scaleVariable = "QT_SCALE_FACTOR";

// True if the environment tells it to the toolkit now. What the person has set there stays.
bool announceScale(Toolkit::Platform platform)
{
    if (platform != Toolkit::Platform::x11 || qEnvironmentVariableIsSet(scaleVariable)
        || qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS"))
        return false;
    const int scale = sessionScale();
    return scale > 1 && qputenv(scaleVariable, QByteArray::number(scale));
}

} // namespace

Toolkit::Toolkit(Platform platform)
    : runtimeFolder_(ownRuntimeFolder(platform))
    , scaleAnnounced_(announceScale(platform))
    , platform_(platform == Platform::x11 ? "xcb" : "offscreen")
    , arguments_{program_.data(), flag_.data(), platform_.data(), nullptr}
    , application_(count_, arguments_.data())
{
    if (scaleAnnounced_) // It is not for the programs that this one starts.
        qunsetenv(scaleVariable);
    QApplication::setApplicationName(u"QuillMossNotch"_s);
    QApplication::setDesktopFileName(u"local.quillmoss.notch"_s);
}

} // namespace notch
