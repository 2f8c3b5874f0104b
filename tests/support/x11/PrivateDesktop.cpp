// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/x11/PrivateDesktop.h"

#include <QStandardPaths>

#include <stdexcept>

namespace notch {

namespace {

constexpr int patience = 20'000; // Milliseconds.

bool isInstalled(const QString& program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace

std::string PrivateDesktop::missing()
{
    for (const char* program : {"Xvfb", "openbox", "xrandr"}) {
        if (!isInstalled(QString::fromLatin1(program)))
            return std::string(program) + " is not installed";
    }
    return {};
}

PrivateDesktop::PrivateDesktop(const QString& screen)
{
    // Two accessibility launchers in one runtime folder destroy each other's socket.
    for (const char* variable : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, directory_.path().c_str());
    qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + directory_ / "none").c_str());
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");

    // Without -noreset the server resets when its first client leaves, and the manager loses it.
    start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
            QStringLiteral("0"), screen, QStringLiteral("-noreset"), QStringLiteral("-nolisten"),
            QStringLiteral("tcp")});
    if (!processes_.back()->waitForReadyRead(patience))
        throw std::runtime_error("Xvfb did not start");
    qputenv("DISPLAY", ":" + processes_.back()->readLine().trimmed());
    start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
}

PrivateDesktop::~PrivateDesktop()
{
    while (!processes_.empty())
        stopLast();
}

void PrivateDesktop::start(const QString& program, const QStringList& arguments)
{
    auto& process = *processes_.emplace_back(std::make_unique<QProcess>());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
}

bool PrivateDesktop::startCompositor()
{
    const auto picom = QStringLiteral("picom");
    if (!isInstalled(picom))
        return false;
    start(picom, {QStringLiteral("--config"), QStringLiteral("/dev/null"),
                     QStringLiteral("--backend"), QStringLiteral("xrender")});
    return true;
}

void PrivateDesktop::stopLast()
{
    processes_.back()->kill();
    processes_.back()->waitForFinished(patience);
    processes_.pop_back();
}

bool PrivateDesktop::run(const QString& program, const QStringList& arguments)
{
    return QProcess::execute(program, arguments) == 0;
}

} // namespace notch
