// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/ListeningSocket.h"

#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {
namespace {

using Code = TransportError::Code;

constexpr Seconds ample{30};
constexpr uid_t nobody = 65534;

class ListeningSocketTest : public testing::Test {
protected:
    Result<ListeningSocket, TransportError> open() const { return ListeningSocket::open(place, 4); }
    std::optional<Code> errorOfOpen() const
    {
        const auto listening = open();
        return listening.ok() ? std::nullopt : std::optional(listening.error().code);
    }

    // A socket as a crashed server leaves it.
    UniqueFd leaveSocket(mode_t mode = 0600) const
    {
        EXPECT_FALSE(place.directory().prepare());
        auto socket = makeStreamSocket();
        EXPECT_FALSE(place.bind(socket));
        EXPECT_EQ(::chmod(path, mode), 0);
        return socket;
    }

    // True when the stranger's part is true in a process of another user.
    static bool holdsForStranger(const std::function<bool()>& part)
    {
        const pid_t stranger = ::fork();
        if (stranger == 0)
            ::_exit(::setuid(nobody) == 0 && part() ? 0 : 1);
        int status = -1;
        ::waitpid(stranger, &status, 0);
        return status == 0;
    }

    TemporaryDirectory temporary;
    SocketPath place{SocketDirectory(temporary / "bridge"), approvalSocketName};
    const char* const path = place.path().c_str();
    const char* const directory = place.directory().path().c_str();
};

TEST_F(ListeningSocketTest, trustsOnlyItsOwnDirectoryAndSocket)
{
    const auto elsewhere = temporary / "elsewhere";
    const std::function<void()> unsafe[] = {
        [&] { leaveSocket(0666); },
        [&] { leaveSocket(0400); },
        [&] {
            ::mkdir(directory, 0700);
            UniqueFd(::open(path, O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        },
        [&] {
            leaveSocket();
            ::rename(path, elsewhere.c_str());
            EXPECT_EQ(::symlink(elsewhere.c_str(), path), 0);
        },
        [&] { ::mkdir(directory, 0755); },
        [&] { ::mkdir(directory, 0500); },
        [&] {
            ::mkdir(elsewhere.c_str(), 0700);
            EXPECT_EQ(::symlink(elsewhere.c_str(), directory), 0);
        },
        [&] { UniqueFd(::open(directory, O_CREAT | O_WRONLY | O_CLOEXEC, 0700)); },
    };
    for (const auto& prepare : unsafe) {
        prepare();
        const auto before = place.identity();
        EXPECT_EQ(errorOfOpen(), Code::unsafePath) << &prepare - unsafe;
        EXPECT_EQ(place.identity(), before) << &prepare - unsafe;
        std::filesystem::remove_all(directory);
        std::filesystem::remove_all(elsewhere);
    }
    EXPECT_EQ(errorOfOpen(), std::nullopt);
    leaveSocket();
    EXPECT_EQ(errorOfOpen(), std::nullopt);
    EXPECT_FALSE(place.identity());
}

TEST_F(ListeningSocketTest, refusesAPathThatDoesNotFitAnAddress)
{
    const auto name = std::string(103 - place.directory().path().size() - 1, 's');
    EXPECT_TRUE(ListeningSocket::open(SocketPath(place.directory(), name), 4).ok());
    const auto longer = ListeningSocket::open(SocketPath(place.directory(), name + "s"), 4);
    ASSERT_FALSE(longer.ok());
    EXPECT_EQ(longer.error(), (TransportError{Code::system, ENAMETOOLONG}));
}

TEST_F(ListeningSocketTest, leavesALiveServerAlone)
{
    const auto first = ListeningSocket::open(place, 0);
    ASSERT_TRUE(first.ok());
    EXPECT_EQ(errorOfOpen(), Code::alreadyRunning);
    // Probes that are not accepted fill the backlog; a server with a full one is alive, too.
    while (place.connect()) { }
    EXPECT_EQ(errorOfOpen(), Code::alreadyRunning);
    EXPECT_TRUE(first.value().isReachable());
}

TEST_F(ListeningSocketTest, isReachedOnlyOnASafePath)
{
    const auto listening = open();
    ASSERT_TRUE(listening.ok());
    for (const auto& [socketMode, directoryMode, reached] :
        {std::tuple{0660U, 0700U, false}, {0600U, 0750U, false}, {0600U, 0700U, true}}) {
        ::chmod(path, socketMode);
        ::chmod(directory, directoryMode);
        EXPECT_EQ(place.connect().has_value(), reached) << socketMode;
        EXPECT_EQ(listening.value().isReachable(), reached) << socketMode;
    }
}

TEST_F(ListeningSocketTest, acceptsUntilTheFlagIsRaised)
{
    const auto listening = open();
    const auto stop = PollableFlag::make();
    ASSERT_TRUE(listening.ok() && stop);
    EXPECT_FALSE(listening.value().accept(*stop, Seconds{0}));
    const auto client = place.connect();
    const auto accepted = listening.value().accept(*stop, ample);
    ASSERT_TRUE(client && accepted);
    EXPECT_TRUE(::fcntl(accepted->get(), F_GETFL) & O_NONBLOCK);
    EXPECT_TRUE(::fcntl(accepted->get(), F_GETFD) & FD_CLOEXEC);
    const auto late = place.connect();
    stop->raise();
    EXPECT_FALSE(listening.value().accept(*stop, ample));
}

TEST_F(ListeningSocketTest, takesNoConnectionOfAnotherUser)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can act for another user";
    const auto listening = open();
    const auto stop = PollableFlag::make();
    ASSERT_TRUE(listening.ok() && stop);
    // As if every path on the way had been opened.
    ::chmod(temporary.path().c_str(), 0711);
    ::chmod(directory, 0711);
    ::chmod(path, 0666);
    sockaddr_un address{.sun_family = AF_UNIX};
    std::ranges::copy(place.path(), address.sun_path);
    const UniqueFd client(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    EXPECT_TRUE(holdsForStranger([&] {
        return ::connect(client.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }));
    EXPECT_FALSE(listening.value().accept(*stop, ample));
    char byte{};
    EXPECT_EQ(::recv(client.get(), &byte, 1, 0), 0) << "it is closed";
}

TEST_F(ListeningSocketTest, givesNothingToAServerOfAnotherUser)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can act for another user";
    const auto socket = leaveSocket();
    EXPECT_TRUE(holdsForStranger([&] { return ::listen(socket.get(), 4) == 0; }));
    EXPECT_EQ(errorOfOpen(), Code::alreadyRunning);
    EXPECT_FALSE(place.connect());
    ASSERT_EQ(::chown(path, nobody, nobody), 0);
    EXPECT_EQ(errorOfOpen(), Code::unsafePath);
}

TEST_F(ListeningSocketTest, leavesAPathThatIsNoLongerItsOwn)
{
    {
        const auto listening = open();
        ASSERT_TRUE(listening.ok());
        ::rename(path, (temporary / "kept").c_str());
        leaveSocket();
        EXPECT_FALSE(listening.value().isReachable());
    }
    EXPECT_TRUE(place.identity());
}

} // namespace
} // namespace notch
