// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Signals/TerminationSignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace notch {

namespace {

constexpr std::array signals{SIGTERM, SIGINT};

// A handler rather than a blocked signal with signalfd(2): programs that this one starts would
// inherit the block and could not be ended, while handlers do not outlive execve(2).
std::atomic<int> counterFd{-1};
static_assert(std::atomic<int>::is_always_lock_free); // The handler may use nothing else.

void count(int)
{
    const int savedErrno = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(counterFd, &one, sizeof one);
    errno = savedErrno;
}

void handleWith(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : signals)
        ::sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> arrived)
    : counter_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , arrived_(std::move(arrived))
{
    if (!counter_.valid())
        return; // The signals keep their usual effect: the process ends, and answers no hook.
    notifier_.emplace(counter_.get(), QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] { deliver(); });
    counterFd = counter_.get();
    handleWith(count);
}

TerminationSignals::~TerminationSignals()
{
    if (!counter_.valid())
        return;
    handleWith(SIG_DFL);
    counterFd = -1;
}

void TerminationSignals::deliver()
{
    std::uint64_t count = 0;
    if (::read(counter_.get(), &count, sizeof count) != sizeof count)
        return;
    for (; count > 0; --count)
        arrived_();
}

} // namespace notch
