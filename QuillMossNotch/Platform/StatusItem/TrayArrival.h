// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/Display/SelectionWatch.h"

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;
struct sd_bus;
struct sd_bus_message;

namespace notch {

// Waits until the desktop has a tray: a StatusNotifier host on the session bus, or one that holds
// X11's selection. The toolkit looks for one when its first icon is made, and never again: an icon
// that is made before stays unseen for ever. Main thread.
class TrayArrival {
public:
    // `arrived` runs once, from the event loop; soon where a tray is there already.
    explicit TrayArrival(std::function<void()> arrived);
    ~TrayArrival();
    Q_DISABLE_COPY_MOVE(TrayArrival)

private:
    void listen();
    void askForHost();
    void processBus();
    void tell();

    std::function<void()> arrived_; // Empty when it has been told.
    SelectionWatch dock_;
    std::unique_ptr<sd_bus, sd_bus* (*)(sd_bus*)> bus_; // Null where there is none.
    QObject context_; // Its destruction cancels what is queued.
    QSocketNotifier* notifier_ = nullptr; // The context's.
};

} // namespace notch
