// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookClient.h"

#include "Bridge/Framing.h"
#include "Bridge/ListeningSocket.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <thread>

namespace notch {
namespace {

constexpr Seconds ample{30};
constexpr std::string_view goodInput =
    R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"command":"ls"}})";
constexpr std::string_view allowLine =
    R"({"decision":"approve","hookSpecificOutput":{"decision":{"behavior":"allow"},)"
    R"("hookEventName":"PermissionRequest","permissionDecision":"allow"}})"
    "\n";

struct Pipe {
    UniqueFd out;
    UniqueFd in;
};

Pipe makePipe(int flags = 0)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC | flags), 0);
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

std::string readAll(const UniqueFd& from)
{
    std::string all;
    std::array<char, 4096> chunk;
    for (ssize_t count; (count = ::read(from.get(), chunk.data(), chunk.size())) > 0;)
        all.append(chunk.data(), static_cast<std::size_t>(count));
    return all;
}

class HookClientTest : public testing::Test {
protected:
    // What the hook prints for this input.
    std::string printed(std::string_view input, int pipeFlags = 0) const
    {
        auto host = makePipe(pipeFlags);
        auto answer = makePipe();
        std::thread writer([&] {
            for (auto rest = input; !rest.empty();) {
                const auto count = ::write(host.in.get(), rest.data(), rest.size());
                if (count > 0)
                    rest.remove_prefix(static_cast<std::size_t>(count));
                else if (errno != EAGAIN)
                    break;
            }
            host.in = {};
        });
        HookClient(place.directory()).run("quillmoss", host.out.get(), answer.in.get());
        host.out = {}; // Ends the writer if the hook read less than everything.
        writer.join();
        answer.in = {};
        return readAll(answer.out);
    }

    // What the hook prints when a server gives these bytes for its request's line.
    std::string printedFor(const std::function<std::string(const ApprovalRequest&)>& reply) const
    {
        const auto listening = ListeningSocket::open(place, 1);
        EXPECT_TRUE(listening.ok());
        std::thread server([&] {
            const auto stop = PollableFlag::make();
            const auto connection = listening.value().accept(*stop, ample);
            const auto line = readFrame(*connection, {.deadline = Uptime::now() + ample});
            const auto request = ApprovalRequest::parse(line.value_or(""));
            ASSERT_TRUE(request);
            const auto bytes = reply(*request);
            ::send(connection->get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        });
        auto output = printed(goodInput);
        server.join();
        return output;
    }

    TemporaryDirectory temporary;
    BridgeSocket place{BridgeDirectory(temporary / "bridge"), approvalSocketName};
};

std::string replyLine(const ApprovalRequest& request, Decision decision)
{
    return DecisionReply{.id = request.id, .decision = decision}.serialize() + "\n";
}

TEST_F(HookClientTest, printsNothingButForTheReplyToItsOwnRequest)
{
    struct Row {
        const char* name;
        std::function<std::string(const ApprovalRequest&)> reply;
        std::string_view printed;
    };
    for (const auto& row : {
             Row{"allow", [](const auto& request) { return replyLine(request, Decision::allow); },
                 allowLine},
             Row{"passthrough",
                 [](const auto& request) { return replyLine(request, Decision::passthrough); }, ""},
             Row{"closed", [](const auto&) { return std::string(); }, ""},
             Row{"another id",
                 [](auto request) {
                     request.id.back() ^= 1;
                     return replyLine(request, Decision::allow);
                 },
                 ""},
             Row{"unknown word",
                 [](const auto& request) {
                     return R"({"id":")" + request.id + "\",\"decision\":\"maybe\"}\n";
                 },
                 ""},
             Row{"line not ended",
                 [](const auto& request) {
                     auto line = replyLine(request, Decision::allow);
                     line.pop_back();
                     return line;
                 },
                 ""},
             Row{"two lines",
                 [](const auto& request) {
                     const auto line = replyLine(request, Decision::allow);
                     return line + line;
                 },
                 ""},
             Row{"no JSON", [](const auto&) { return std::string("allow\n"); }, ""},
         })
        EXPECT_EQ(printedFor(row.reply), row.printed) << row.name;
}

// No damage on the way back turns into a decision that nobody took.
TEST_F(HookClientTest, neverAllowsForADamagedDenial)
{
    const auto length =
        DecisionReply{.id = std::string(36, 'x'), .decision = Decision::deny}.serialize().size();
    for (std::size_t at = 0; at < length; ++at) {
        const auto output = printedFor([&](const auto& request) {
            auto line = replyLine(request, Decision::deny);
            line[at] = static_cast<char>(line[at] ^ (1 << (at % 8)));
            return line;
        });
        EXPECT_EQ(output.find("allow"), std::string::npos) << at;
    }
}

TEST_F(HookClientTest, readsAllOfALargestInputAndNothingBeyond)
{
    struct Row {
        std::size_t size;
        bool asked;
    };
    for (const auto& row : {Row{1'048'576, true}, Row{1'048'577, false}}) {
        const auto listening = ListeningSocket::open(place, 1);
        ASSERT_TRUE(listening.ok());
        const auto input = std::string(goodInput) + std::string(row.size - goodInput.size(), ' ');
        const auto stop = PollableFlag::make();
        bool asked = false;
        std::thread server([&] { asked = listening.value().accept(*stop, ample).has_value(); });
        printed(input, O_NONBLOCK);
        stop->raise();
        server.join();
        EXPECT_EQ(asked, row.asked) << row.size;
    }
}

} // namespace
} // namespace notch
