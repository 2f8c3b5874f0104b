// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/NativeApprovalClassifier.h"

#include "support/TreeText.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace NativeApprovalClassifier;

TEST(NativeApprovalLabels, readsALabelWithOrWithoutItsNumber)
{
    for (const auto* text : {"允许本次删除", "1允许本次删除", "1. 允许本次删除", "1：允许本次删除",
             "1 、.:\u3000允许本次删除", " \t允许本次删除\r\n"})
        EXPECT_EQ(normalizedButtonLabel(text), allowLabel) << text;
    for (const auto* text : {"取消删除", "2. 取消删除\n", "2取消删除", "2:取消删除"})
        EXPECT_EQ(normalizedButtonLabel(text), denyLabel) << text;
    for (const auto* text :
        {"", "2. 允许本次删除", "3. 允许本次删除", "1. 取消删除", "允许本次删除吗",
            "请允许本次删除", ". 允许本次删除", "1, 允许本次删除", "允许\u200D本次删除",
            "允许本次删除\u200B", "1\v允许本次删除", "允许本次删除\n取消删除", "允许本次删除\xFF"})
        EXPECT_EQ(normalizedButtonLabel(text), std::nullopt) << text;
}

TEST(NativeApprovalLabels, seesButtonsThatNoCardHas)
{
    EXPECT_FALSE(hasRecognizableButtons({}));
    for (const auto* button :
        {"Button -visible \"允许本次删除\"", "Button -enabled \"2：取消删除\"",
            "Button \"\"\n  Group\n    StaticText \"1\"\n    StaticText -visible \"允许本次删除\"",
            "Button\n  StaticText \"2\"\n  StaticText \"                                 "
            "取消删除\"",
            "Window\n  StaticText\n    Button \"取消删除\" \"2. 取消删除\""})
        EXPECT_TRUE(hasRecognizableButtons(parseTree(button))) << button;
    for (const auto* button : {"Button \"允许本次删除\" \"取消删除\"",
             "Button \"帮助\" \"取消删除\"", "Button", "Link \"取消删除\"",
             "Button \"允许本次删除\" \" \"", "Button\n  StaticText\n    StaticText \"取消删除\"",
             "Button\n  StaticText \"允许本\"\n  StaticText \"次删除\""})
        EXPECT_FALSE(hasRecognizableButtons(parseTree(button))) << button;
}

} // namespace
} // namespace notch
