// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <functional>
#include <optional>

struct xcb_client_message_event_t;

namespace notch {

// Pointer events of the whole desktop, wherever the pointer is and whoever has grabbed it. The
// events elsewhere leave out a press in one of this application's own windows: that is the
// in-application monitor's.
//
// It asks the server for as little as will do, since every event wakes this process: presses and
// releases always; motion only while a button is held; and for a free pointer no motion at all but
// the moments when it enters or leaves one of our windows, whose input region is the drawn surface.
//
// Nothing is ever reported without an X server. Main thread.
class PointerMonitor final : private QAbstractNativeEventFilter {
public:
    enum class Event : std::uint8_t { moved, dragged, leftDown, rightDown };

    struct Handlers {
        // From the event loop, never within the delivery of another event. Several motions in a
        // row are one.
        std::function<void(Event)> elsewhere;
        // Every press of a button or a finger, also in our own windows, but no wheel step; with the
        // server's time of it, and before any window hears of it.
        std::function<void(quint32 time)> pressed;
    };

    explicit PointerMonitor(Handlers handlers);
    ~PointerMonitor() override;
    Q_DISABLE_COPY_MOVE(PointerMonitor)

    // Every motion wakes this process now.
    bool watchesMotion() const { return held_ != 0; }

private:
    struct Press {
        Event event = Event::moved;
        quint32 time = 0;
    };

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void handleRaw(unsigned type, unsigned button, quint32 time);
    void select(bool motion) const;
    void askForMark(quint32 time) const;
    void handleMark(const xcb_client_message_event_t& mark);
    void deliverLater();
    void deliver();

    Handlers handlers_;
    QObject context_; // Its destruction cancels queued deliveries.
    unsigned opcode_ = 0;
    unsigned held_ = 0; // One bit for each button.
    std::optional<Event> motion_;
    std::optional<Press> press_; // Until it is known whose it is.
    std::optional<Event> pressElsewhere_;
    quint32 markWindow_ = 0; // Never shown; events to it mark a place in the row of events.
    bool queued_ = false;
};

} // namespace notch
