// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Question/NativeQuestionClassifier.h"
#include "support/LargeTree.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

constexpr std::size_t million = 1'000'000;
constexpr std::size_t deep = 100'000; // Each level has less stack than any frame needs.

void expectNoCard(NativeApprovalNode root, bool hasButtons)
{
    std::vector<NativeApprovalNode> roots;
    roots.push_back(std::move(root));
    EXPECT_EQ(NativeApprovalClassifier::uniqueMatch(roots), std::nullopt);
    EXPECT_EQ(NativeApprovalClassifier::hasRecognizableButtons(roots), hasButtons);
    EXPECT_EQ(NativeQuestionClassifier::uniqueMatch(roots), std::nullopt);
    EXPECT_FALSE(NativeQuestionClassifier::hasRecognizableQuestion(roots));
}

// A walk on the call stack would end the process in each of these, and a quadratic one the test's
// time.
TEST(HostileTree, wideListGivesNoMatch)
{
    LargeTree tree;
    auto list = tree.node(role::group);
    for (std::size_t child = 0; child < million; ++child)
        list.children.push_back(tree.node(role::staticText, {"x"}));
    expectNoCard(std::move(list), false);
}

TEST(HostileTree, cardUnderADeepChainGivesNoMatchForItsButtonsAlone)
{
    LargeTree tree;
    auto root = tree.chain(deep, role::group);
    auto* bottom = &root;
    while (!bottom->children.empty())
        bottom = &bottom->children.back();
    bottom->children.push_back(tree.node(role::button, {"允许本次删除"}));
    bottom->children.push_back(tree.node(role::button, {"取消删除"}));
    expectNoCard(std::move(root), true);
}

// Each of the buttons shows all texts below it, which is half of all texts on average.
TEST(HostileTree, buttonsInButtonsAreReadOnceEach)
{
    LargeTree tree;
    expectNoCard(tree.chain(deep, role::button,
                     [&](auto& button) {
                         button.children.push_back(tree.node(role::staticText, {". ："}));
                     }),
        false);
}

TEST(HostileTree, hugeLabelIsRecognizedLikeASmallOne)
{
    LargeTree tree;
    auto button = tree.node(role::button);
    button.children.push_back(tree.node(role::staticText, {"1"}));
    for (std::size_t mark = 0; mark < deep; ++mark)
        button.children.push_back(tree.node(role::staticText, {" . "}));
    button.children.push_back(tree.node(role::staticText, {"允许本次删除"}));
    expectNoCard(std::move(button), true);
}

} // namespace
} // namespace notch
