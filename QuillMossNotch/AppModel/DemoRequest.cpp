// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/DemoRequest.h"

#include "Foundation/Json.h"
#include "Foundation/UUID.h"

namespace notch {
namespace {

constexpr Seconds demoLifetime{3600};

std::string toolInput(const char* command, const char* description)
{
    return Json(Json::Object{{"command", command}, {"description", description}}).pretty();
}

ApprovalRequest hookDemo()
{
    return {
        .sessionID = "demo-session",
        .toolName = "Bash",
        .toolInputJSON = toolInput("printf 'Hello from QuillMoss'", "输出一条问候，检查终端环境"),
        .eventName = "PermissionRequest",
    };
}

ApprovalRequest nativeDemo()
{
    return {
        .sessionID = "演示窗口",
        .toolName = "原生安全确认",
        .toolInputJSON = toolInput("rm -f ./temporary-frames/*.png",
            "检测到批量删除操作：累计删除数量 336 项，阈值 50\n高风险命令，可能影响系统稳定性"),
        .eventName = std::string(nativeApprovalEventName),
    };
}

} // namespace

ApprovalRequest demoRequest(Demo demo, Date now)
{
    auto request = demo == Demo::native ? nativeDemo() : hookDemo();
    request.id = UUID::random().text();
    request.cwd = "~/Projects/my-project";
    request.expiresAt = now + demoLifetime;
    request.source = "demo";
    return request;
}

} // namespace notch
