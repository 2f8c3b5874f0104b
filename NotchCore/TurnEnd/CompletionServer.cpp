// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionServer.h"

#include "Transport/Framing.h"

#include <cerrno>
#include <memory>
#include <new>
#include <utility>

namespace notch {
namespace {

constexpr int backlog = 16;
constexpr Seconds readTimeout{0.15};

} // namespace

CompletionServer::CompletionServer(SocketDirectory directory)
    : place_(std::move(directory), turnEndSocketName)
{
}

CompletionServer::~CompletionServer()
{
    stop();
}

std::optional<TransportError> CompletionServer::start(OnEvent onEvent)
{
    const std::lock_guard lifecycle(lifecycle_);
    if (stopping_)
        return TransportError{TransportError::Code::alreadyRunning};
    auto opened = ListeningSocket::open(place_, backlog);
    if (!opened.ok())
        return opened.error();
    stopping_ = PollableFlag::make();
    if (!stopping_)
        return TransportError{TransportError::Code::system, errno};
    auto listening = std::make_shared<const ListeningSocket>(std::move(opened).value());
    if (workers_.start([this, listening = std::move(listening), onEvent = std::move(onEvent)] {
            acceptEvents(*listening, onEvent);
        }))
        return std::nullopt;
    stopping_.reset();
    return TransportError{TransportError::Code::system, EAGAIN};
}

void CompletionServer::stop()
{
    const std::lock_guard lifecycle(lifecycle_);
    if (!stopping_)
        return;
    stopping_->raise();
    workers_.wait();
    stopping_.reset();
}

void CompletionServer::acceptEvents(const ListeningSocket& listening, const OnEvent& onEvent)
{
    while (!stopping_->isRaised()) {
        try {
            const auto connection = listening.accept(*stopping_);
            if (auto event = connection ? readEvent(*connection) : std::nullopt)
                callbacks_.async([onEvent, event = std::move(*event)] { onEvent(event); });
        } catch (const std::bad_alloc&) {
            // The channel may lose an event; the next one need not be lost.
        }
    }
}

std::optional<CompletionEvent> CompletionServer::readEvent(const UniqueFd& connection) const
{
    const auto line = readFrame(connection, {.deadline = Uptime::now() + readTimeout,
                                                .maximumPayload = CompletionEvent::maximumPayload,
                                                .stop = &*stopping_});
    auto event = line ? CompletionEvent::parse(*line) : std::nullopt;
    if (!event || !event->isValid() || !event->isFresh(Date::now()))
        return std::nullopt;
    return event;
}

} // namespace notch
