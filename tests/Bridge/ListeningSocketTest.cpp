// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ListeningSocket.h"

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

class ListeningSocketTest : public testing::Test {
protected:
    std::optional<TransportError> openAndClose() const
    {
        const auto listening = ListeningSocket::open(place, 4);
        return listening.ok() ? std::nullopt : std::optional(listening.error());
    }

    // What a crashed server leaves behind.
    void leaveSocket(mode_t mode) const
    {
        ASSERT_FALSE(place.directory().prepare());
        const auto socket = makeStreamSocket();
        ASSERT_FALSE(place.bind(socket));
        ASSERT_EQ(::chmod(place.path().c_str(), mode), 0);
    }

    void leaveFile() const
    {
        ASSERT_FALSE(place.directory().prepare());
        UniqueFd file(::open(place.path().c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        ASSERT_TRUE(file.valid());
    }

    bool exists(const std::string& path) const { return ::access(path.c_str(), F_OK) == 0; }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), approvalSocketName};
};

TEST_F(ListeningSocketTest, trustsOnlyItsOwnDirectoryAndSocket)
{
    struct Row {
        const char* name;
        std::function<void()> prepare;
        std::optional<Code> error;
        bool pathStays; // What stood under the socket's path before.
    };
    const auto directory = place.directory().path();
    for (const auto& row :
        {
            Row{"nothing there", [] {}, std::nullopt, false},
            Row{"stale socket", [&] { leaveSocket(0600); }, std::nullopt, false},
            Row{"stale socket, open to others", [&] { leaveSocket(0666); }, Code::unsafePath, true},
            Row{"stale socket, too closed", [&] { leaveSocket(0400); }, Code::unsafePath, true},
            Row{"regular file", [&] { leaveFile(); }, Code::unsafePath, true},
            Row{"link to a stale socket",
                [&] {
                    leaveSocket(0600);
                    const auto target = temporary / "target";
                    ::rename(place.path().c_str(), target.c_str());
                    EXPECT_EQ(::symlink(target.c_str(), place.path().c_str()), 0);
                },
                Code::unsafePath, true},
            Row{"directory open to others", [&] { ::mkdir(directory.c_str(), 0755); },
                Code::unsafePath, false},
            Row{"directory without write", [&] { ::mkdir(directory.c_str(), 0500); },
                Code::unsafePath, false},
            Row{"link to a safe directory",
                [&] {
                    ::mkdir((temporary / "real").c_str(), 0700);
                    EXPECT_EQ(::symlink((temporary / "real").c_str(), directory.c_str()), 0);
                },
                Code::unsafePath, false},
            Row{"file in place of the directory",
                [&] { UniqueFd(::open(directory.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0700)); },
                Code::unsafePath, false},
        }) {
        row.prepare();
        const auto error = openAndClose();
        EXPECT_EQ(error ? std::optional(error->code) : std::nullopt, row.error) << row.name;
        struct stat status { };
        EXPECT_EQ(::lstat(place.path().c_str(), &status) == 0, row.pathStays) << row.name;
        std::filesystem::remove_all(directory);
        std::filesystem::remove_all(temporary / "real");
    }
}

TEST_F(ListeningSocketTest, refusesAPathThatDoesNotFitAnAddress)
{
    const auto name = std::string(103 - place.directory().path().size() - 1, 's');
    EXPECT_FALSE(ListeningSocket::open(BridgeSocket(place.directory(), name), 4).ok() == false);
    const auto longer = ListeningSocket::open(BridgeSocket(place.directory(), name + "s"), 4);
    ASSERT_FALSE(longer.ok());
    EXPECT_EQ(longer.error(), (TransportError{Code::system, ENAMETOOLONG}));
}

TEST_F(ListeningSocketTest, leavesALiveServerAlone)
{
    const auto first = ListeningSocket::open(place, 0);
    ASSERT_TRUE(first.ok());
    EXPECT_EQ(openAndClose(), TransportError{Code::alreadyRunning});
    // The probes that nobody accepts fill the backlog; a server with a full one is alive, too.
    while (place.connect()) { }
    EXPECT_EQ(openAndClose(), TransportError{Code::alreadyRunning});
    EXPECT_TRUE(first.value().isReachable());
}

TEST_F(ListeningSocketTest, connectsOnlyToASafeSocket)
{
    EXPECT_FALSE(place.connect());
    const auto listening = ListeningSocket::open(place, 4);
    ASSERT_TRUE(listening.ok());
    EXPECT_TRUE(place.connect());
    ::chmod(place.path().c_str(), 0660);
    EXPECT_FALSE(place.connect());
    EXPECT_FALSE(listening.value().isReachable());
    ::chmod(place.path().c_str(), 0600);
    ::chmod(place.directory().path().c_str(), 0750);
    EXPECT_FALSE(place.connect());
    EXPECT_FALSE(listening.value().isReachable());
    ::chmod(place.directory().path().c_str(), 0700);
    EXPECT_TRUE(place.connect());
    EXPECT_TRUE(listening.value().isReachable());
}

TEST_F(ListeningSocketTest, acceptsUntilTheFlagIsRaised)
{
    const auto listening = ListeningSocket::open(place, 4);
    const auto stop = PollableFlag::make();
    ASSERT_TRUE(listening.ok() && stop);
    EXPECT_FALSE(listening.value().accept(*stop, Seconds{0}));
    const auto client = place.connect();
    const auto accepted = listening.value().accept(*stop, ample);
    ASSERT_TRUE(client && accepted);
    EXPECT_TRUE(::fcntl(accepted->get(), F_GETFL) & O_NONBLOCK);
    EXPECT_TRUE(::fcntl(accepted->get(), F_GETFD) & FD_CLOEXEC);
    stop->raise();
    EXPECT_FALSE(listening.value().accept(*stop, ample));
}

TEST_F(ListeningSocketTest, takesNoConnectionOfAnotherUser)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can act for another user";
    const auto listening = ListeningSocket::open(place, 4);
    const auto stop = PollableFlag::make();
    ASSERT_TRUE(listening.ok() && stop);
    // As if somebody had opened every path on the way.
    ::chmod(temporary.path().c_str(), 0711);
    ::chmod(place.directory().path().c_str(), 0711);
    ::chmod(place.path().c_str(), 0666);
    const pid_t stranger = ::fork();
    if (stranger == 0) {
        constexpr uid_t nobody = 65534;
        sockaddr_un address{.sun_family = AF_UNIX};
        std::ranges::copy(place.path(), address.sun_path);
        const UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const bool connected =
            ::setuid(nobody) == 0
            && ::connect(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        char byte{};
        ::_exit(connected && ::recv(socket.get(), &byte, 1, 0) == 0 ? 0 : 1);
    }
    EXPECT_FALSE(listening.value().accept(*stop, ample));
    int status = -1;
    ::waitpid(stranger, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(ListeningSocketTest, removesItsOwnPathOnly)
{
    {
        const auto listening = ListeningSocket::open(place, 4);
        ASSERT_TRUE(listening.ok());
        EXPECT_TRUE(exists(place.path()));
    }
    EXPECT_FALSE(exists(place.path()));
    {
        const auto listening = ListeningSocket::open(place, 4);
        ASSERT_TRUE(listening.ok());
        ::rename(place.path().c_str(), (temporary / "kept").c_str());
        leaveSocket(0600);
        EXPECT_FALSE(listening.value().isReachable());
    }
    EXPECT_TRUE(exists(place.path()));
}

} // namespace
} // namespace notch
