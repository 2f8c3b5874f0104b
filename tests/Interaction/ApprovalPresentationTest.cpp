// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/ApprovalPresentation.h"

#include <gtest/gtest.h>

#include <map>

namespace notch {
namespace {

TEST(ApprovalPresentation, saysWhatTheToolIsAboutToDo)
{
    struct Row {
        const char* toolName;
        const char* input;
        const char* title;
        const char* primaryText; // Null: the input as it is.
        std::optional<std::string> description;
        bool more = false;
        const char* eventName = "PermissionRequest";
    };
    const auto* const native = "NativeApproval";
    const Row rows[] = {
        {"Bash", R"({"command":" ls "})", "执行终端命令", " ls "},
        {"Bash", R"({"command":"ls","timeout":1})", "执行终端命令", "ls", {}, true},
        {"Bash", R"({"command":"ls","description":" why "})", "执行终端命令", "ls", " why "},
        {"Bash", R"({"command":"ls","description":""})", "执行终端命令", "ls"},
        {"Bash", R"({"command":"ls","description":7})", "执行终端命令", "ls"},
        {"Bash", R"({"description":"why"})", "使用 Bash", nullptr, "why"},
        {"Bash", R"({"command":""})", "使用 Bash", nullptr},
        {"Bash", R"({"command":["ls"],"x":1})", "使用 Bash", nullptr},
        {"Bash", R"({"command":null})", "使用 Bash", nullptr},
        {"Bash", R"({"command":"ls")", "使用 Bash", nullptr},
        {"Bash", R"(["command"])", "使用 Bash", nullptr},
        {"bash", R"({"command":"ls"})", "使用 bash", nullptr},
        {"Read", R"({"command":"ls","x":1})", "读取文件", nullptr},
        {"Write", "{}", "写入文件", nullptr},
        {"Edit", "{}", "修改文件", nullptr},
        {"WebFetch", R"({"description":"d"})", "访问网页", nullptr, "d"},
        {"mcp__x", R"({"a":1})", "使用 mcp__x", nullptr},
        {"Bash", R"({"command":"rm","n":1})", "确认批量删除", "rm", {}, true, native},
        {"card", R"({"command":"rm"})", "确认批量删除", "rm", {}, false, native},
        {"card", "{}", "使用 card", nullptr, {}, false, native},
        {"Read", "{}", "读取文件", nullptr, {}, false, native},
    };
    for (const auto& row : rows) {
        const ApprovalPresentation shown(
            {.toolName = row.toolName, .toolInputJSON = row.input, .eventName = row.eventName});
        SCOPED_TRACE(std::string(row.toolName) + ' ' + row.input);
        EXPECT_EQ(shown.title, row.title);
        EXPECT_EQ(shown.primaryText, row.primaryText ? row.primaryText : row.input);
        EXPECT_EQ(shown.description, row.description);
        EXPECT_EQ(shown.hasAdditionalParameters, row.more);
    }
}

TEST(ApprovalPresentation, namesTheProjectByTheLastDirectory)
{
    const std::map<std::string, std::string> projects{{"", "未提供目录"}, {" \n\t", "未提供目录"},
        {"\u3000\u00A0\u2028", "未提供目录"}, {"/", "/"}, {"//", "/"}, {"/home/a/notch", "notch"},
        {"  /home/a/notch/\n", "notch"}, {"\u3000/home/a/项目\u3000", "项目"},
        {"/home/a/my notch//", "my notch"}, {"notch", "notch"}};
    for (const auto& [cwd, project] : projects)
        EXPECT_EQ(ApprovalPresentation({.cwd = cwd}).project, project) << '"' << cwd << '"';
}

} // namespace
} // namespace notch
