// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"

#include "Bridge/ApprovalAdmission.h"
#include "Transport/Framing.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <new>
#include <poll.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <utility>

namespace notch {
namespace {

constexpr int backlog = 32;
constexpr Seconds requestTimeout{5}; // From a hook's connection to the end of its line.
constexpr Seconds replyTimeout{1};
constexpr Seconds shortagePause{0.1}; // Before the next try when memory is short.

// A descriptor that becomes readable when the wall clock reaches the date, also when the clock is
// set meanwhile (timerfd_create(2)). Invalid when the system has none left.
UniqueFd alarmAt(Date date)
{
    UniqueFd alarm(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    const double since1970 = date.since1970().count();
    const double whole = std::floor(since1970);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(whole);
    when.it_value.tv_nsec = static_cast<long>((since1970 - whole) * 1e9);
    if (::timerfd_settime(alarm.get(), TFD_TIMER_ABSTIME, &when, nullptr) != 0)
        return {};
    return alarm;
}

// A hook says nothing after its line, so a byte ends the wait just as the end of the stream does.
bool peerWaits(const UniqueFd& socket)
{
    char byte{};
    return ::recv(socket.get(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0
        && (errno == EAGAIN || errno == EINTR);
}

} // namespace

ApprovalServer::ApprovalServer(SocketDirectory directory)
    : place_(std::move(directory), approvalSocketName)
{
}

ApprovalServer::~ApprovalServer()
{
    stop();
}

std::optional<TransportError> ApprovalServer::start(Callbacks callbacks)
{
    const std::lock_guard lifecycle(lifecycle_);
    if (isRunning())
        return TransportError{TransportError::Code::alreadyRunning};
    return listen(std::move(callbacks));
}

std::optional<TransportError> ApprovalServer::listen(Callbacks callbacks)
{
    auto listening = ListeningSocket::open(place_, backlog);
    if (!listening.ok())
        return listening.error();
    stopping_ = PollableFlag::make();
    if (!stopping_)
        return TransportError{TransportError::Code::system, errno};
    callbacks_ = std::make_shared<const Callbacks>(std::move(callbacks));
    {
        const std::lock_guard lock(lock_);
        requests_.open();
    }
    auto socket = std::make_shared<const ListeningSocket>(std::move(listening).value());
    if (workers_.start([this, socket = std::move(socket)] { acceptConnections(*socket); }))
        return std::nullopt;
    const std::lock_guard lock(lock_);
    requests_.close();
    return TransportError{TransportError::Code::system, EAGAIN};
}

bool ApprovalServer::decide(const std::string& id, Decision decision)
{
    const auto connection = UUID::parse(id);
    const std::lock_guard lock(lock_);
    return connection && requests_.decide(*connection, decision, Date::now());
}

void ApprovalServer::stop()
{
    const std::lock_guard lifecycle(lifecycle_);
    {
        const std::lock_guard lock(lock_);
        requests_.close();
    }
    if (stopping_)
        stopping_->raise();
    workers_.wait();
    callbacks_ = nullptr;
}

bool ApprovalServer::isRunning()
{
    const std::lock_guard lock(lock_);
    return requests_.isOpen();
}

void ApprovalServer::acceptConnections(const ListeningSocket& listening)
{
    for (bool reachable = true; isRunning();) {
        try {
            if (reachable && !listening.isReachable()) {
                tellUnreachable();
                reachable = false;
            }
            if (auto socket = listening.accept(*stopping_))
                take(std::move(*socket));
        } catch (const std::bad_alloc&) {
            stopping_->wait(shortagePause);
        }
    }
}

void ApprovalServer::tellUnreachable()
{
    callbackQueue_.async([callbacks = callbacks_] {
        if (callbacks->onUnreachable)
            callbacks->onUnreachable();
    });
}

void ApprovalServer::take(UniqueFd socket)
{
    auto decided = PollableFlag::make();
    if (!decided)
        return;
    const auto connection = std::make_shared<Connection>(Connection{
        .token = UUID::random(), .decided = std::move(*decided), .socket = std::move(socket)});
    WorkerGroup::Work work = [this, connection] { serve(*connection); };
    if (enter(*connection) && !workers_.start(std::move(work)))
        end(*connection);
}

bool ApprovalServer::enter(const Connection& connection)
{
    const std::lock_guard lock(lock_);
    return requests_.enter(connection.token, connection.decided);
}

void ApprovalServer::serve(Connection& connection)
{
    try {
        auto request = readRequest(connection);
        if (request && admit(connection, *std::exchange(request, {}))) {
            if (const auto decision = awaitDecision(connection))
                reply(connection, *decision);
        }
    } catch (const std::bad_alloc&) {
        // Closing gives the request back to the host, as in every other failure.
    }
    end(connection);
}

std::optional<ApprovalRequest> ApprovalServer::readRequest(const Connection& connection)
{
    const FrameLimits limits{.deadline = Uptime::now() + requestTimeout, .stop = &*stopping_};
    const auto line = readFrame(connection.socket, limits);
    if (!line)
        return std::nullopt;
    const std::lock_guard parsing(parsing_);
    return admittedRequest(*line, Date::now());
}

// Queueing under the lock keeps the callbacks in the order of the admissions. Whatever may be short
// comes before it, so that an admission fails as a whole or not at all.
bool ApprovalServer::admit(Connection& connection, ApprovalRequest request)
{
    const auto id = UUID::parse(request.id);
    const auto expiresAt = request.expiresAt;
    connection.idOnWire = std::exchange(request.id, connection.token.text());
    connection.alarm = alarmAt(expiresAt);
    connection.removal = SerialQueue::prepared([callbacks = callbacks_, id = request.id] {
        if (callbacks->onRemoval)
            callbacks->onRemoval(id);
    });
    auto arrival =
        SerialQueue::prepared([callbacks = callbacks_, request = std::move(request)]() mutable {
            if (callbacks->onRequest)
                callbacks->onRequest(std::move(request));
        });
    const std::lock_guard lock(lock_);
    if (!id || !connection.alarm.valid() || !requests_.admit(connection.token, *id, expiresAt))
        return false;
    callbackQueue_.async(std::move(arrival));
    return true;
}

// Everything that may end the wait wakes it: the hook, a decision, the stop, and the expiry as the
// wall clock tells it. So it sleeps without a time-out, and a waiting hook costs no time. A
// decision that comes together with one of the others counts if the hook is still there to hear it.
std::optional<Decision> ApprovalServer::awaitDecision(const Connection& connection)
{
    std::array<pollfd, 4> waited{{
        {connection.socket.get(), POLLIN, 0},
        {connection.decided.descriptor(), POLLIN, 0},
        {stopping_->descriptor(), POLLIN, 0},
        {connection.alarm.get(), POLLIN, 0},
    }};
    while (::poll(waited.data(), waited.size(), -1) < 0 && errno == EINTR) { }
    const auto decision = settle(connection);
    return peerWaits(connection.socket) && !stopping_->isRaised() ? decision : std::nullopt;
}

std::optional<Decision> ApprovalServer::settle(const Connection& connection)
{
    const std::lock_guard lock(lock_);
    return requests_.settle(connection.token);
}

void ApprovalServer::reply(const Connection& connection, Decision decision) const
{
    if (decision == Decision::passthrough)
        return; // The closed connection is the answer.
    const DecisionReply reply{.id = connection.idOnWire, .decision = decision};
    const FrameLimits limits{.deadline = Uptime::now() + replyTimeout, .stop = &*stopping_};
    writeFrame(connection.socket, reply.serialize(), limits);
}

void ApprovalServer::end(Connection& connection) noexcept
{
    {
        const std::lock_guard lock(lock_);
        // The model knows only of requests that were admitted.
        if (requests_.leave(connection.token))
            callbackQueue_.async(std::move(connection.removal));
    }
    connection.socket = {};
}

} // namespace notch
