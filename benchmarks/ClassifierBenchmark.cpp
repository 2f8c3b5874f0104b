// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What uniqueMatch() of both classifiers costs, in walks: each figure is its time divided by that
// of a plain pre-order walk that touches every text of the same tree. A ratio that grows with the
// number of nodes is a classifier that is not linear.

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Question/NativeQuestionClassifier.h"
#include "support/LargeTree.h"
#include "support/TreeText.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

namespace notch {
namespace {

using Roots = std::vector<NativeApprovalNode>;

std::size_t walk(const Roots& roots)
{
    std::size_t touched = 0;
    std::vector<const NativeApprovalNode*> open;
    for (const auto& root : roots)
        open.push_back(&root);
    while (!open.empty()) {
        const auto* node = open.back();
        open.pop_back();
        for (const auto& text : node->texts)
            touched += text.size() + static_cast<unsigned char>(text.empty() ? 0 : text.front());
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
            open.push_back(&*child);
    }
    return touched;
}

// The best of many runs: what the machine's other work cannot add to.
template <class Work> double seconds(Work work)
{
    using Clock = std::chrono::steady_clock;
    double best = std::numeric_limits<double>::max();
    const auto end = Clock::now() + std::chrono::milliseconds(100);
    for (int run = 0; run < 5 || Clock::now() < end; ++run) {
        const auto start = Clock::now();
        volatile auto result = work();
        static_cast<void>(result);
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

void report(const char* shape, std::size_t nodes, const Roots& roots)
{
    const double plain = seconds([&] { return walk(roots); });
    const double approval =
        seconds([&] { return NativeApprovalClassifier::uniqueMatch(roots).has_value(); });
    const double question =
        seconds([&] { return NativeQuestionClassifier::uniqueMatch(roots).has_value(); });
    const bool hasApproval = NativeApprovalClassifier::uniqueMatch(roots).has_value();
    const bool hasQuestion = NativeQuestionClassifier::uniqueMatch(roots).has_value();
    std::printf("%-28s %7zu %10.1f %9.2f%s %8.2f%s\n", shape, nodes, plain * 1e6, approval / plain,
        hasApproval ? "*" : " ", question / plain, hasQuestion ? "*" : " ");
}

// A window like the host's: an item is a group of two lines of text, two buttons with words and one
// with an image only; seven nodes.
NativeApprovalNode item(LargeTree& tree)
{
    auto group = tree.node(role::group);
    auto icon = tree.node(role::button);
    icon.children.push_back(tree.node(role::image));
    group.children.push_back(tree.node(role::staticText, {"已经删除了三个临时文件，还有两个要看"}));
    group.children.push_back(tree.node(role::button, {"复制这一段"}));
    group.children.push_back(tree.node(role::button, {"帮助"}));
    group.children.push_back(std::move(icon));
    group.children.push_back(tree.node(role::staticText, {"完"}));
    return group;
}

// Items that hold something which passes for a part of a card at a first look.
NativeApprovalNode nearMiss(LargeTree& tree)
{
    auto group = item(tree);
    group.children[1].texts = {"允许本次删除吗"};
    group.children[2].texts = {"2. 取消删除。"};
    group.children[4].texts = {"检测到批量删除操作：累计删除数量 1 项，阈值 2"};
    return group;
}

NativeApprovalNode nearQuestion(LargeTree& tree)
{
    auto group = item(tree);
    group.children[1].texts = {"上一题"};
    group.children[2].texts = {"全部跳过"};
    return group;
}

template <class Item> Roots window(std::size_t nodes, Item makeItem, Roots cards = {})
{
    LargeTree tree;
    Roots roots;
    roots.push_back(tree.node(role::window));
    roots[0].frame = ScreenRect{0, 0, 2000, 2000};
    for (std::size_t made = 30; made + 7 <= nodes; made += 7)
        roots[0].children.push_back(makeItem(tree));
    // Deep, and after everything else.
    auto* bottom = &roots[0];
    for (std::size_t level = 0; level < 20; ++level) {
        bottom->children.push_back(tree.node(role::group));
        bottom = &bottom->children.back();
    }
    std::ranges::move(cards, std::back_inserter(bottom->children));
    return roots;
}

Roots deleteCard()
{
    return parseTree(R"(
Group #card
  StaticText #t "检测到批量删除操作：累计删除数量 12 项，阈值 10"
  StaticText #r "高风险命令，可能影响系统稳定性"
  StaticText #c "rm -rf build"
  Button #a "1 允许本次删除"
  Button #d "2 取消删除"
)");
}

Roots questionCard()
{
    return parseTree(R"(
Group #card @0,0,600,800
  StaticText #t @20,20,300,24 "选择哪一个数据库？"
  Button #p -enabled @340,16,32,32 "上一题"
    Image #pi @352,28,8,8
  StaticText #c @376,22,20,20 "1"
  StaticText #s @400,22,10,20 "/"
  StaticText #u @414,22,20,20 "3"
  Button #n @440,16,32,32 "下一题"
    Image #ni @452,28,8,8
  Button #k @478,16,32,32 "全部跳过"
    Image #ki @490,28,8,8
  Button #r @16,64,560,40 "1 本地文件"
    StaticText #rn @24,74,16,20 "1"
    StaticText #rl @48,74,400,20 "本地文件"
    Image #ri @550,74,16,20
)");
}

Roots one(NativeApprovalNode root)
{
    Roots roots;
    roots.push_back(std::move(root));
    return roots;
}

// Each button shows all the text below it.
NativeApprovalNode nestedButtons(LargeTree& tree, std::size_t nodes)
{
    return tree.chain(nodes / 2, role::button,
        [&](auto& button) { button.children.push_back(tree.node(role::staticText, {"."})); });
}

// One parent for all.
template <class Child> NativeApprovalNode list(LargeTree& tree, std::size_t nodes, Child makeChild)
{
    auto group = tree.node(role::group);
    for (std::size_t child = 1; child < nodes; ++child)
        group.children.push_back(makeChild());
    return group;
}

void reportShapes(std::size_t nodes)
{
    LargeTree tree;
    report("no card", nodes, window(nodes, item));
    report("delete card, buried deep", nodes, window(nodes, item, deleteCard()));
    report("question card, buried deep", nodes, window(nodes, item, questionCard()));
    report("near misses, delete", nodes, window(nodes, nearMiss));
    report("near misses, question", nodes, window(nodes, nearQuestion));
    report("chain of groups", nodes, one(tree.chain(nodes, role::group)));
    report("chain of buttons with texts", nodes, one(nestedButtons(tree, nodes)));
    report("list of skip buttons", nodes,
        one(list(tree, nodes, [&] { return tree.node(role::button, {"全部跳过"}); })));
    report("list of texts", nodes,
        one(list(tree, nodes, [&] { return tree.node(role::staticText, {"20 x"}); })));
}

} // namespace
} // namespace notch

int main()
{
    std::printf("%-28s %7s %10s %10s %9s   (* = a match)\n", "tree", "nodes", "walk, us",
        "approval", "question");
    for (const std::size_t nodes : {100, 1799, 20000})
        notch::reportShapes(nodes);
}
