// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

namespace notch {

// Whether somebody blends translucent windows with what lies below them: the owner of
// _NET_WM_CM_S<screen> (EWMH, "Compositing Managers"). Without an X server drawing always blends.
// Main thread.
class Compositor final : private QAbstractNativeEventFilter {
public:
    // `changed` runs whenever one comes or goes.
    explicit Compositor(std::function<void()> changed);
    ~Compositor() override;
    Q_DISABLE_COPY_MOVE(Compositor)

    bool isPresent() const { return present_; }

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    std::function<void()> changed_;
    bool present_ = true;
    unsigned selection_ = 0;
    unsigned notifyType_ = 0;
};

} // namespace notch
