// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookClient.h"

#include "Bridge/Framing.h"
#include "Bridge/ListeningSocket.h"
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

std::string line(const std::string& id, Decision decision)
{
    return DecisionReply{.id = id, .decision = decision}.serialize() + "\n";
}

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

    std::optional<Decision> decisionAfter(const std::string& reply) const
    {
        auto server = std::async(std::launch::async, [&] { return serve(reply); });
        const auto decision = client.exchange(request);
        EXPECT_EQ(server.get(), request);
        return decision;
    }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), approvalSocketName};
    Result<ListeningSocket, TransportError> listening = ListeningSocket::open(place, 1);
    HookClient client{place.directory()};
    ApprovalRequest request{.id = "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5F"};
};

TEST_F(HookClientTest, takesNothingButTheReplyToItsOwnRequest)
{
    struct Row {
        std::string reply;
        std::optional<Decision> decision;
    };
    const auto allow = line(request.id, Decision::allow);
    for (const auto& row : {
             Row{allow, Decision::allow},
             Row{line(request.id, Decision::deny), Decision::deny},
             Row{line(request.id, Decision::passthrough), Decision::passthrough},
             Row{line("0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5E", Decision::allow), std::nullopt},
             Row{allow + allow, std::nullopt},
             Row{"allow\n", std::nullopt},
             Row{"", std::nullopt},
         })
        EXPECT_EQ(decisionAfter(row.reply), row.decision) << row.reply;
}

// No damage on the way back turns into a decision that nobody took.
TEST_F(HookClientTest, neverAllowsForADamagedDenial)
{
    const auto denial = line(request.id, Decision::deny);
    for (std::size_t at = 0; at < denial.size(); ++at) {
        auto damaged = denial;
        damaged[at] = static_cast<char>(damaged[at] ^ (1 << (at % 8)));
        EXPECT_NE(decisionAfter(damaged), Decision::allow) << at;
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
