// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookClient.h"

#include "Transport/Framing.h"
#include "Transport/ListeningSocket.h"
#include "support/Connections.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <fcntl.h>
#include <future>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <thread>

namespace notch {
namespace {

constexpr Seconds ample{30};

class HookClientTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(listening.ok()); }

    // What the next hook asks; it gets these bytes for it.
    ApprovalRequest serve(const std::string& reply) const
    {
        const auto never = PollableFlag::make();
        const auto connection = listening.value().accept(*never, ample);
        const auto bytes = readFrame(*connection, {.deadline = Uptime::now() + ample});
        const auto asked = ApprovalRequest::parse(bytes.value_or("")).value();
        sendBytes(*connection, reply);
        return asked;
    }

    TemporaryDirectory temporary;
    SocketPath place{SocketDirectory(temporary / "bridge"), approvalSocketName};
    Result<ListeningSocket, TransportError> listening = ListeningSocket::open(place, 1);
    HookClient client{place.directory()};
};

TEST_F(HookClientTest, takesNothingButTheReplyToItsOwnRequest)
{
    const ApprovalRequest request{.id = "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5F"};
    const auto allow = DecisionReply{.id = request.id, .decision = Decision::allow}.serialize();
    auto otherId = allow;
    ++otherId[otherId.find("5F")];
    for (const auto& [reply, decision] :
        std::vector<std::pair<std::string, std::optional<Decision>>>{
            {allow + "\n", Decision::allow}, {otherId + "\n", {}}, {"allow\n", {}}, {allow, {}}}) {
        auto server = std::async(std::launch::async, [&] { return serve(reply); });
        EXPECT_EQ(client.exchange(request), decision) << reply;
        EXPECT_EQ(server.get(), request);
    }
}

// A host may hand over a pipe that does not block.
TEST_F(HookClientTest, waitsForTheRestOfItsInput)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    const UniqueFd input(ends[0]);
    UniqueFd host(ends[1]);
    std::thread hook([&] { client.run("汉", input.get(), input.get()); });
    for (const std::string_view piece :
        {R"({"hook_event_name":"PermissionRequest",)", R"("tool_name":"Bash","tool_input":{}})"}) {
        EXPECT_EQ(::write(host.get(), piece.data(), piece.size()), std::ssize(piece));
        for (int unread = 1; unread > 0; std::this_thread::yield())
            ASSERT_EQ(::ioctl(input.get(), FIONREAD, &unread), 0);
    }
    host = {};
    EXPECT_EQ(serve("").source, "汉");
    hook.join();
}

} // namespace
} // namespace notch
