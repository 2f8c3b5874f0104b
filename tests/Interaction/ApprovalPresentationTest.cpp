// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/ApprovalPresentation.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

ApprovalRequest bash(std::string input)
{
    return {
        .toolName = "Bash", .toolInputJSON = std::move(input), .eventName = "PermissionRequest"};
}

TEST(ApprovalPresentation, namesTheProjectByTheLastDirectory)
{
    struct Row {
        const char* cwd;
        const char* project;
    };
    for (const auto& row : {
             Row{"", "未提供目录"},
             Row{" \n\t", "未提供目录"},
             Row{"/", "/"},
             Row{"//", "/"},
             Row{"/home/a/notch", "notch"},
             Row{"  /home/a/notch/\n", "notch"},
             Row{"notch", "notch"},
         }) {
        auto request = bash("{}");
        request.cwd = row.cwd;
        EXPECT_EQ(ApprovalPresentation(request).project, row.project) << '"' << row.cwd << '"';
    }
}

} // namespace
} // namespace notch
