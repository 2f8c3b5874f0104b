// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

namespace notch {

// Whether some program holds an X11 selection: the sign by which a desktop says that it has a
// compositor ("_NET_WM_CM_S0"; EWMH, "Compositing Managers") or a tray ("_NET_SYSTEM_TRAY_S0"). The
// toolkit knows one X screen, and its number is 0. Without an X server there is no holder.
// Main thread.
class SelectionWatch final : private QAbstractNativeEventFilter {
public:
    // `changed` runs whenever the first holder comes or the last one goes.
    SelectionWatch(const char* selection, std::function<void()> changed);
    ~SelectionWatch() override;
    Q_DISABLE_COPY_MOVE(SelectionWatch)

    bool isHeld() const { return held_; }

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    std::function<void()> changed_;
    bool held_ = false;
    unsigned selection_ = 0;
    unsigned notifyType_ = 0;
};

} // namespace notch
