// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// For resident-memory: as many hooks as the server takes, each with the largest request that there
// can be, which go when standard input ends. The argument says what the requests are full of.

#include "Bridge/ApprovalRequest.h"
#include "Foundation/UUID.h"
#include "Transport/Framing.h"
#include "Transport/SocketPath.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace notch {
namespace {

constexpr std::size_t hooks = 32;

struct Filling {
    std::string_view name;
    std::string_view begin;
    std::string_view piece;
    std::string_view end;
};
constexpr Filling fillings[]{
    {"numbers", R"({"a":[)", "0,", "0]}"}, // Fills thirty times its size when it is built.
    {"lines", R"({"command":")", R"(echo hello\n)", R"("})"},
};

std::string largestLine(const Filling& filling)
{
    ApprovalRequest request{.id = UUID::random().text(),
        .toolName = "Bash",
        .eventName = "PermissionRequest",
        .expiresAt = Date::now() + Seconds{45}};
    std::string input(filling.begin);
    const auto escaped = filling.piece.size() + (filling.piece.find('\\') != filling.piece.npos);
    const auto room = maximumFramePayload - request.serialize().size() - 100;
    for (std::size_t filled = 0; filled + escaped <= room; filled += escaped)
        input += filling.piece;
    request.toolInputJSON = input + std::string(filling.end);
    return request.serialize();
}

int run(std::string_view name)
{
    const SocketPath place(SocketDirectory::ofUser(), approvalSocketName);
    std::vector<UniqueFd> connections;
    for (const auto& filling : fillings) {
        for (std::size_t hook = 0; filling.name == name && hook < hooks; ++hook) {
            auto connection = place.connect(Seconds{1});
            const FrameLimits limits{.deadline = Uptime::now() + Seconds{5}};
            if (!connection || !writeFrame(*connection, largestLine(filling), limits))
                return std::puts("The resident application does not take the requests."), 1;
            connections.push_back(std::move(*connection));
        }
    }
    while (std::getchar() != EOF) { }
    return 0;
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    return notch::run(argc > 1 ? argv[1] : "numbers");
}
