// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/NativeApprovalClassifier.h"

#include "Native/Oracle.h"
#include "support/TreeText.h"

#include <gtest/gtest.h>

#include <random>

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

// Buttons in buttons, texts under texts, labels in pieces.
NativeApprovalNode randomNode(std::mt19937& random, int depth)
{
    static const std::vector<std::string> roles{"AXButton", "AXGroup", "AXStaticText"};
    static const std::vector<std::string> pieces{"1", "2", " . ", "：", " ", "允许本次删除",
        "1 允许本次删除", "取消删除", "\u30002、", "1\v", "1,", "帮助", ""};
    const auto pick = [&](const auto& list) { return list[random() % list.size()]; };
    NativeApprovalNode node;
    node.role = pick(roles);
    node.visible = random() % 8 != 0;
    node.enabled = true;
    const bool isText = node.is(role::staticText);
    for (auto texts = random() % (isText ? 3 : 8); isText ? texts > 0 : texts == 7; --texts)
        node.texts.push_back(pick(pieces));
    for (auto children = depth > 0 ? random() % 4 : 0; children > 0; --children)
        node.children.push_back(randomNode(random, depth - 1));
    return node;
}

TEST(NativeApprovalLabels, readsButtonsInButtonsAsTheOracleDoes)
{
    std::mt19937 random(20010101);
    int recognized = 0;
    for (int run = 0; run < 4000; ++run) {
        std::vector<NativeApprovalNode> roots;
        roots.push_back(randomNode(random, 5));
        const bool seen = hasRecognizableButtons(roots);
        recognized += seen;
        ASSERT_EQ(seen, oracle::recognizesButtons(roots)) << run;
        ASSERT_EQ(uniqueMatch(roots), oracle::approval(roots)) << run;
    }
    EXPECT_GT(recognized, 400); // Both answers occur often.
    EXPECT_LT(recognized, 3600);
}

} // namespace
} // namespace notch
