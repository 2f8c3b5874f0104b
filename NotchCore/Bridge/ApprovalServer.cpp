// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"

#include "Bridge/ApprovalAdmission.h"
#include "Transport/Framing.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <poll.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <utility>

namespace notch {
namespace {

constexpr int backlog = 32;
constexpr std::size_t maximumConnections = 32;
constexpr Seconds requestTimeout{5}; // For a hook's line, from its connection on.
constexpr Seconds replyTimeout{1};
// How often the path is looked at; a loss is to be known within 2 seconds.
constexpr Seconds reachabilityInterval{1};

constexpr double secondsFrom1970To2001 = 978307200.0;

// A descriptor that becomes readable when the wall clock reaches the date, also when the clock is
// set meanwhile (timerfd_create(2)). Invalid when there is none to be had.
UniqueFd alarmAt(Date date)
{
    UniqueFd alarm(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    const double since1970 = date.seconds + secondsFrom1970To2001;
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

ApprovalServer::ApprovalServer(BridgeDirectory directory)
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
    {
        const std::lock_guard lock(lock_);
        callbacks_ = std::make_shared<const Callbacks>(std::move(callbacks));
        running_ = true;
    }
    auto socket = std::make_shared<const ListeningSocket>(std::move(listening).value());
    if (workers_.start([this, socket = std::move(socket)] { acceptConnections(*socket); }))
        return std::nullopt;
    const std::lock_guard lock(lock_);
    running_ = false;
    return TransportError{TransportError::Code::system, EAGAIN};
}

bool ApprovalServer::decide(const std::string& id, Decision decision)
{
    const std::lock_guard lock(lock_);
    const auto found = running_ ? pending_.find(id) : pending_.end();
    if (found == pending_.end())
        return false;
    auto& connection = *found->second;
    if (connection.decision || connection.request->expiresAt <= Date::now())
        return false;
    connection.decision = decision;
    connection.decided.raise();
    return true;
}

void ApprovalServer::stop()
{
    const std::lock_guard lifecycle(lifecycle_);
    {
        const std::lock_guard lock(lock_);
        running_ = false;
    }
    if (stopping_)
        stopping_->raise();
    workers_.wait();
    const std::lock_guard lock(lock_);
    callbacks_ = nullptr;
}

bool ApprovalServer::isRunning()
{
    const std::lock_guard lock(lock_);
    return running_;
}

void ApprovalServer::acceptConnections(const ListeningSocket& listening)
{
    bool reachable = true;
    while (isRunning()) {
        if (auto socket = listening.accept(*stopping_, reachabilityInterval))
            take(std::move(*socket));
        if (!reachable || listening.isReachable())
            continue;
        reachable = false;
        const std::lock_guard lock(lock_);
        if (callbacks_->onUnreachable)
            callbackQueue_.async([callbacks = callbacks_] { callbacks->onUnreachable(); });
    }
}

void ApprovalServer::take(UniqueFd socket)
{
    auto decided = PollableFlag::make();
    if (!decided)
        return;
    const auto connection = std::make_shared<Connection>(
        Connection{UUID::random(), std::move(socket), std::move(*decided), {}, {}});
    {
        const std::lock_guard lock(lock_);
        if (!running_ || connections_.size() >= maximumConnections)
            return;
        connections_.emplace(connection->token, connection);
    }
    if (!workers_.start([this, connection] { serve(*connection); }))
        end(*connection);
}

void ApprovalServer::serve(Connection& connection)
{
    const FrameLimits limits{.deadline = Uptime::now() + requestTimeout, .stop = &*stopping_};
    const auto line = readFrame(connection.socket, limits);
    const auto request = line ? admittedRequest(*line, Date::now()) : std::nullopt;
    if (request && admit(connection, *request)) {
        if (const auto decision = awaitDecision(connection, request->expiresAt))
            reply(connection, {.id = request->id, .decision = *decision});
    }
    end(connection);
}

// Queueing under the lock keeps the callbacks in the order of the admissions.
bool ApprovalServer::admit(Connection& connection, const ApprovalRequest& request)
{
    const std::lock_guard lock(lock_);
    if (!running_ || !pending_.emplace(request.id, &connection).second)
        return false;
    connection.request = request;
    if (callbacks_->onRequest)
        callbackQueue_.async([callbacks = callbacks_, request] { callbacks->onRequest(request); });
    return true;
}

// Everything that may end the wait wakes it: the hook, a decision, the stop, and the expiry as the
// wall clock tells it. So it sleeps without a time-out, and a waiting hook costs no time.
std::optional<Decision> ApprovalServer::awaitDecision(Connection& connection, Date expiresAt)
{
    const auto alarm = alarmAt(expiresAt);
    if (!alarm.valid())
        return std::nullopt;
    bool expired = false;
    while (peerWaits(connection.socket)) {
        // Asked before the expiry: what decide() has accepted was in time.
        if (const auto decision = storedDecision(connection))
            return decision;
        if (expired || Date::now() >= expiresAt)
            break;
        std::array<pollfd, 4> waited{{
            {connection.socket.get(), POLLIN, 0},
            {connection.decided.descriptor(), POLLIN, 0},
            {stopping_->descriptor(), POLLIN, 0},
            {alarm.get(), POLLIN, 0},
        }};
        if ((::poll(waited.data(), waited.size(), -1) < 0 && errno != EINTR)
            || stopping_->isRaised())
            break;
        expired = waited[3].revents != 0; // Stays so, should the clock be set back now.
    }
    return std::nullopt;
}

std::optional<Decision> ApprovalServer::storedDecision(const Connection& connection)
{
    const std::lock_guard lock(lock_);
    return connection.decision;
}

void ApprovalServer::reply(const Connection& connection, const DecisionReply& reply) const
{
    if (reply.decision == Decision::passthrough)
        return; // Closing says it.
    const FrameLimits limits{.deadline = Uptime::now() + replyTimeout, .stop = &*stopping_};
    writeFrame(connection.socket, reply.serialize(), limits);
}

void ApprovalServer::end(Connection& connection)
{
    {
        const std::lock_guard lock(lock_);
        // Only an admitted request is pending; one that was refused for its id has none here.
        if (connection.request) {
            pending_.erase(connection.request->id);
            if (callbacks_->onRemoval)
                callbackQueue_.async([callbacks = callbacks_, id = connection.request->id] {
                    callbacks->onRemoval(id);
                });
        }
        connections_.erase(connection.token);
    }
    connection.socket = {};
}

} // namespace notch
