// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/NativeApprovalClassifier.h"

#include "Mutation.h"
#include "Oracle.h"

#include <gtest/gtest.h>

#include <random>

namespace notch {
namespace {

using namespace NativeApprovalClassifier;

const std::string groupedTree = R"(
Window #w
  Group #page
    StaticText #chat "请稍候" "稍候"
    Group #card
      StaticText #title "检测到批量删除操作：累计删除数量 12 项，阈值 10"
      StaticText #risk "高风险命令，可能影响系统稳定性"
      Group #box
        StaticText #command " rm -rf build\n"
      Button #allow "1 允许本次删除"
      Button #deny "2 取消删除"
)";

const std::string flattenedTree = R"(
Window #w
  Group #page
    StaticText #before "好的"
    StaticText #title @40,100,200,20 "检测到批量删除操作：累计删除数量 12 项，阈值 10"
    Group #riskBox @250,100,180,20
      StaticText #risk @250,100,180,20 "高风险命令，可能影响系统稳定性"
    StaticText #command @40,124,400,20 "rm -rf build"
    Button #allow @40,150,300,30
      StaticText "1."
      StaticText "允许本次删除"
    Button #deny @40,184,300,30 "取消删除"
    StaticText #after "完"
)";

NativeApprovalMatch expectedMatch(NativeApprovalLayout layout)
{
    const bool isGrouped = layout == NativeApprovalLayout::grouped;
    return {.windowID = "w",
        .containerID = isGrouped ? "card" : "page",
        .allowID = "allow",
        .denyID = "deny",
        .contextNodeIDs = isGrouped
                            ? std::vector<std::string>{"title", "risk", "command"}
                            : std::vector<std::string>{"title", "riskBox", "risk", "command"},
        .layout = layout,
        .context = {.title = "检测到批量删除操作：累计删除数量 12 项，阈值 10",
            .risk = std::string(riskText),
            .command = isGrouped ? " rm -rf build\n" : "rm -rf build",
            .allowLabel = std::string(allowLabel),
            .denyLabel = std::string(denyLabel)}};
}

TEST(NativeApprovalClassifier, namesThePartsOfACardInEachLayout)
{
    EXPECT_EQ(uniqueMatch(parseTree(groupedTree)), expectedMatch(NativeApprovalLayout::grouped));
    EXPECT_EQ(
        uniqueMatch(parseTree(flattenedTree)), expectedMatch(NativeApprovalLayout::flattened));
    EXPECT_EQ(uniqueMatch({}), std::nullopt);
    EXPECT_FALSE(hasRecognizableButtons({}));
}

// What is wrong with either layout.
const std::vector<Mutation> spoiltCards{
    {"second allow button", R"(Window #w)", "Window #v\n  Button \"允许本次删除\"\nWindow #w"},
    {"second deny button", R"(Button #deny)", "Button \"取消删除\"\n    Button #deny"},
    {"no allow label", R"(允许本次删除")", R"(允许删除")"},
    {"no deny label", R"(取消删除")", R"(取消")"},
    {"hidden window", "#w", "#w -visible"},
    {"hidden ancestor", "#page", "#page -visible"},
    {"hidden allow button", "#allow", "#allow -visible"},
    {"hidden deny button", "#deny", "#deny -visible"},
    {"disabled allow button", "#allow", "#allow -enabled"},
    {"disabled deny button", "#deny", "#deny -enabled"},
    {"hidden title", "#title", "#title -visible"},
    {"hidden risk", "#risk ", "#risk -visible "},
    {"hidden command", "#command", "#command -visible"},
    {"count below threshold", "数量 12", "数量 9"},
    {"count of nothing", "数量 12 项，阈值 10", "数量 0 项，阈值 0"},
    {"count beyond 64 bits", "数量 12", "数量 9223372036854775808"},
    {"threshold beyond 64 bits", "阈值 10", "阈值 9223372036854775808"},
    {"leading zero", "数量 12", "数量 012"},
    {"words before the summary", "检测到", "已检测到"},
    {"words after the summary", "阈值 10", "阈值 10 项"},
    {"other risk", "高风险命令，", "低风险命令，"},
    {"risk with a blank", "稳定性", "稳定性 "},
    {"risk twice", R"("高风险命令，可能影响系统稳定性")",
        R"("高风险命令，可能影响系统稳定性" "龘")"},
    {"empty command", "rm -rf build", ""},
    {"blank command", "rm -rf build", "\u3000"},
    {"shortened command", "rm -rf", "rm … -rf"},
    {"shortened command, three stops", "rm -rf", "rm ... -rf"},
    {"shortened command, raised dots", "rm -rf", "rm ⋯ -rf"},
    {"command with an escape", "rm -rf", "rm \x1B -rf"},
    {"command turned about", "rm -rf", "rm \u202E -rf"},
    {"button with further words", R"(取消删除")", R"(取消删除" "帮助")"},
};

const std::vector<Mutation> spoiltGroups{
    {"no group", "Group #card", "List #card"},
    {"second command", "Group #box", "StaticText \"ls\"\n      Group #box"},
    {"third button", "Group #box", "Button \"帮助\"\n      Group #box"},
    {"button in a button", "Group #box", "Button \"帮助\"\n        Image\n      Group #box"},
    {"command is a second summary", R"(" rm -rf build\n")",
        R"("检测到批量删除操作：累计删除数量 12 项，阈值 10")"},
    {"command is a second risk", R"(" rm -rf build\n")", R"("高风险命令，可能影响系统稳定性")"},
    {"hidden decoration", "Group #box", "Image -visible\n      Group #box"},
    {"command under a text", "Group #box", "StaticText #box"},
    {"command under a button", "Group #box", "Button #box"},
    {"deny button outside", "      Button #deny", "    Button #deny"},
};

const std::vector<Mutation> spoiltRows{
    {"no group", "Group #page", "List #page"},
    {"title disabled", "#title", "#title -enabled"},
    {"risk disabled", "#risk ", "#risk -enabled "},
    {"command disabled", "#command", "#command -enabled"},
    {"wrapper disabled", "#riskBox", "#riskBox -enabled"},
    {"wrapper hidden", "#riskBox", "#riskBox -visible"},
    {"wrapper with a text", "#riskBox @250,100,180,20", "#riskBox @250,100,180,20 \"\""},
    {"wrapper of another role", "Group #riskBox", "List #riskBox"},
    {"wrapper without a frame", "#riskBox @250,100,180,20", "#riskBox"},
    {"wrapped text without a frame", "#risk @250,100,180,20", "#risk"},
    {"wrapped text of another role", "StaticText #risk", "Heading #risk"},
    {"wrapper of two", "    StaticText #command", "      Image\n    StaticText #command"},
    {"wrapped text with a child", "    StaticText #command",
        "        Image\n    StaticText #command"},
    {"wrapped twice", "      StaticText #risk ",
        "      Group @250,100,180,20\n        StaticText #risk "},
    {"command is a second summary", "rm -rf build",
        "检测到批量删除操作：累计删除数量 12 项，阈值 10"},
    {"command is a second risk", "rm -rf build", "高风险命令，可能影响系统稳定性"},
    {"title wrapped", "StaticText #title", "Group @40,100,200,20\n      StaticText #title"},
    {"title is no text", "StaticText #title", "Heading #title"},
    {"title with a child", "    Group #riskBox", "      Image\n    Group #riskBox"},
    {"two titles", R"(阈值 10")", R"(阈值 10" "龘")"},
    {"two commands", R"("rm -rf build")", R"("rm -rf build" "ls")"},
    {"stranger before allow", "    Button #allow", "    Image\n    Button #allow"},
    {"stranger before deny", "    Button #deny", "    Image\n    Button #deny"},
    {"button after deny", "StaticText #after", "Button #after"},
    {"button in a button", "    Button #deny", "      Button\n    Button #deny"},
    {"hidden in a button", "    Button #deny", "      Image -visible\n    Button #deny"},
    {"allow deeper than deny",
        "    Button #allow @40,150,300,30\n      StaticText \"1.\"\n      StaticText "
        "\"允许本次删除\"",
        "    Group\n      Button #allow @40,150,300,30 \"允许本次删除\""},
    {"title without a frame", "@40,100,200,20", ""},
    {"command without a frame", "@40,124,400,20", ""},
    {"allow without a frame", "@40,150,300,30", ""},
    {"deny without a frame", "@40,184,300,30", ""},
    {"command without a width", "@40,124,400,20", "@40,124,0,20"},
    {"command without a height", "@40,124,400,20", "@40,124,400,0"},
    {"deny above allow, and nothing below",
        R"(      StaticText "1."
      StaticText "允许本次删除"
    Button #deny @40,184,300,30 "取消删除"
    StaticText #after "完")",
        R"(      StaticText "取消删除"
    Button #deny @40,184,300,30 "允许本次删除")"},
    {"endless command", "@40,124,400,20", "@1e308,124,1e308,20"},
};

// Changes that the rules pass over.
const std::vector<Mutation> harmlessGroups{
    {"other separators", "操作：累计删除数量 12 项，阈值 10", "操作: 累计删除数量12项,阈值10"},
    {"equal counts", "数量 12", "数量 10"},
    {"largest count", "数量 12", "数量 9223372036854775807"},
    {"line break at the end", "阈值 10", "阈值 10\\n"},
    {"disabled title", "#title", "#title -enabled"},
    {"hidden text outside", "#chat", "#chat -visible"},
    {"texts that do not show", "#chat", "#chat \"\" \" \""},
    {"same text twice", R"(" rm -rf build\n")", R"(" rm -rf build\n" " rm -rf build\n" "")"},
    {"blank text", "Group #box", "StaticText \" \"\n      Group #box"},
    {"dots that are no ellipsis", "rm -rf", "rm .. -rf"},
    {"other window's deny button, hidden", "Window #w",
        "Window #v\n  Group -visible\n    Button \"取消删除\"\nWindow #w"},
};
const std::vector<Mutation> harmlessRows{
    {"button before the row", "StaticText #before", "Button #before"},
    {"nothing after the row", "    StaticText #after \"完\"\n", ""},
    {"command wrapped", "StaticText #command", "Group @40,124,400,20\n      StaticText #command"},
    {"image in a button", "    Button #deny", "      Image\n    Button #deny"},
};

void expectMatches(const std::string& card, const std::vector<Mutation>& mutations, bool wanted)
{
    for (const auto& mutation : mutations) {
        const auto roots = mutated(card, mutation);
        EXPECT_EQ(uniqueMatch(roots).has_value(), wanted) << mutation.name;
        EXPECT_EQ(uniqueMatch(roots), oracle::approval(roots)) << mutation.name;
    }
}

TEST(NativeApprovalClassifier, refusesACardThatBreaksOneRule)
{
    expectMatches(groupedTree, spoiltCards, false);
    expectMatches(groupedTree, spoiltGroups, false);
    expectMatches(flattenedTree, spoiltCards, false);
    expectMatches(flattenedTree, spoiltRows, false);
}

TEST(NativeApprovalClassifier, acceptsWhatTheRulesPassOver)
{
    expectMatches(groupedTree, harmlessGroups, true);
    expectMatches(flattenedTree, harmlessRows, true);
}

// By the number of the rule.
const std::vector<FrameRow> cardGeometry{
    {"1 low", "allow.h-18 deny.h-18 deny.y-12", "allow.h-0.5"},
    {"1 high", "allow.h+98 deny.h+98 deny.y+94", "allow.h+0.5"},
    {"2 right", "deny.x+2", "deny.x+0.5"},
    {"2 left", "deny.x-2", "deny.x-0.5"},
    {"3 wide", "deny.w+2", "deny.w+0.5"},
    {"3 narrow", "deny.w-2", "deny.w-0.5"},
    {"4 high", "deny.h+2", "deny.h+0.5"},
    {"4 low", "deny.h-2", "deny.h-0.5"},
    {"5", "deny.y-5", "deny.y-0.5"},
    {"6 of 24 points", "deny.y+20", "deny.y+0.5"},
    {"6 of a button", "allow.h-10 deny.h-10 deny.y+6", "deny.y+0.5"},
    {"7 right", "title.x+30", "title.x+0.5"},
    {"7 left", "title.x-30", "title.x-0.5"},
    {"8", "command.x-2", "command.x-0.5"},
    {"9", "title.x+10 command.x+30", "command.x+0.5"},
    {"10", "riskBox.x-212", "riskBox.x-0.5"},
    {"11", "riskBox.x+89.5", "riskBox.x+0.5"},
    {"12", "riskBox.y-2", "riskBox.y-0.5"},
    {"13", "riskBox.h-18 risk.h-18 risk.y+9 riskBox.y+19.5", "riskBox.y+0.5"},
    {"14", "riskBox.h-17.5 risk.h-17.5 risk.y+8.75 riskBox.y-2", "riskBox.h-0.5"},
    {"15", "command.y-6", "command.y-0.5"},
    {"16", "command.y+56 allow.y+56 deny.y+56", "command.y+0.5"},
    {"17", "command.y+8", "command.y+0.5"},
    {"18", "allow.y+54 deny.y+54", "allow.y+0.5"},
    {"19", "title.h+100 command.y+100 allow.y+100 deny.y+100", "title.h+0.5"},
    {"20", "command.h+100 allow.y+100 deny.y+100", "command.h+0.5"},
    {"wrapper, left", "risk.x-2", "risk.x-0.5"},
    {"wrapper, right", "risk.x+2", "risk.x+0.5"},
    {"wrapper, top", "risk.y-2", "risk.y-0.5"},
    {"wrapper, bottom", "risk.y+2", "risk.y+0.5"},
    {"15, text below its wrapper", "risk.y+2 command.y-4", "command.y-0.5"},
    {"15, wrapper below its text", "risk.h-10 command.y-6", "command.y-0.5"},
};

TEST(NativeApprovalClassifier, holdsEachFrameRuleToItsBound)
{
    for (const auto& row : cardGeometry) {
        auto roots = parseTree(flattenedTree);
        editFrames(roots, row.atBound);
        EXPECT_TRUE(uniqueMatch(roots)) << row.name;
        editFrames(roots, row.step);
        EXPECT_FALSE(uniqueMatch(roots)) << row.name;
    }
}

std::vector<Mutation> all(std::initializer_list<std::vector<Mutation>> lists)
{
    std::vector<Mutation> joined;
    for (const auto& list : lists)
        joined.insert(joined.end(), list.begin(), list.end());
    return joined;
}

TEST(NativeApprovalClassifier, agreesWithTheOracleOnEveryTwoChanges)
{
    const auto check = [](const auto& roots, const std::string& name) {
        ASSERT_EQ(uniqueMatch(roots), oracle::approval(roots)) << name;
        ASSERT_EQ(hasRecognizableButtons(roots), oracle::recognizesButtons(roots)) << name;
    };
    forEachPair(groupedTree, all({spoiltCards, spoiltGroups, harmlessGroups}), check);
    auto changes = all({spoiltCards, spoiltRows, harmlessRows});
    for (const auto& row : cardGeometry)
        changes.push_back({.name = row.name, .frames = row.atBound});
    forEachPair(flattenedTree, changes, check);
}

std::string repeated(std::size_t count, const std::string& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

// A group inside the card, and in it groups down to the given depth of the card.
std::string chain(std::size_t depth)
{
    std::string lines;
    for (std::size_t level = 1; level < depth; ++level)
        lines += std::string(2 * level + 4, ' ') + "Group\n";
    return lines;
}

TEST(NativeApprovalClassifier, holdsTheLimitsOfAGroupAtTheirEdge)
{
    const auto with = [](const std::string& more) {
        return uniqueMatch(
            mutated(groupedTree, {"", "      Group #box", more + "      Group #box", ""}))
            .has_value();
    };
    EXPECT_TRUE(with(repeated(83, "      Image\n"))); // 90 nodes
    EXPECT_FALSE(with(repeated(84, "      Image\n")));
    EXPECT_TRUE(with(chain(12)));
    EXPECT_FALSE(with(chain(13)));

    const auto within = [](std::size_t lists) {
        std::string card =
            "Window #w\n  Group #card\n    StaticText \"检测到批量删除操作：累计删除"
            "数量 2 项，阈值 1\"\n    StaticText \"高风险命令，可能影响系统稳定性\"\n"
            "    StaticText \"ls\"\n";
        for (std::size_t level = 0; level < lists; ++level)
            card += std::string(4 + 2 * level, ' ') + "List\n";
        const std::string indent(4 + 2 * lists, ' ');
        return uniqueMatch(parseTree(card + indent + "Button \"允许本次删除\"\n" + indent
                                     + "Button \"取消删除\"\n"))
            .has_value();
    };
    EXPECT_TRUE(within(4)); // The card is the fifth ancestor from below.
    EXPECT_FALSE(within(5));
}

TEST(NativeApprovalClassifier, holdsARowToNinetyNodes)
{
    const auto with = [](std::size_t images) {
        return uniqueMatch(
            mutated(flattenedTree, {"", "    Button #deny",
                                       repeated(images, "      Image\n") + "    Button #deny", ""}))
            .has_value();
    };
    EXPECT_TRUE(with(82));
    EXPECT_FALSE(with(83));
}

TEST(NativeApprovalClassifier, prefersTheDeepestGroupThatPasses)
{
    const auto match = uniqueMatch(
        mutated(groupedTree, {"", "    StaticText #chat \"请稍候\" \"稍候\"\n", "", ""}));
    ASSERT_TRUE(match);
    EXPECT_EQ(match->containerID, "card"); // The page would pass as well.
    const auto outer = uniqueMatch(mutated(groupedTree,
        {"", "    StaticText #chat \"请稍候\" \"稍候\"\n    Group #card", "    List #card", ""}));
    ASSERT_TRUE(outer);
    EXPECT_EQ(outer->containerID, "page");
}

TEST(NativeApprovalClassifier, readsALabelWithOrWithoutItsNumber)
{
    for (const auto* text : {"允许本次删除", "1允许本次删除", "1. 允许本次删除", "1：允许本次删除",
             "1 、.:\u3000允许本次删除", " \t允许本次删除\r\n"})
        EXPECT_EQ(normalizedButtonLabel(text), allowLabel) << text;
    for (const auto* text : {"取消删除", "2. 取消删除\n", "2取消删除"})
        EXPECT_EQ(normalizedButtonLabel(text), denyLabel) << text;
    for (const auto* text :
        {"", "2. 允许本次删除", "3. 允许本次删除", "1. 取消删除", "允许本次删除吗",
            "请允许本次删除", ". 允许本次删除", "1, 允许本次删除", "允许\u200D本次删除",
            "允许本次删除\u200B", "1\v允许本次删除", "允许本次删除\n取消删除", "允许本次删除\xFF"})
        EXPECT_EQ(normalizedButtonLabel(text), std::nullopt) << text;
}

TEST(NativeApprovalClassifier, takesACommandOfAtMost65536Bytes)
{
    EXPECT_TRUE(isCompleteCommand(std::string(65536, 'x')));
    EXPECT_FALSE(isCompleteCommand(std::string(65537, 'x')));
    EXPECT_FALSE(isCompleteCommand("x" + std::string(65536, ' ')));
    EXPECT_FALSE(isCompleteCommand("rm \xC3 -rf"));
    EXPECT_TRUE(isCompleteCommand("rm\t-rf \\\r\n  build"));
}

TEST(NativeApprovalClassifier, seesButtonsThatNoCardHas)
{
    for (const auto* button :
        {"Button -visible \"允许本次删除\"", "Button -enabled \"2：取消删除\"",
            "Button \"\"\n  Group\n    StaticText \"1\"\n    StaticText -visible \"允许本次删除\"",
            "Window\n  StaticText\n    Button \"取消删除\" \"2. 取消删除\""})
        EXPECT_TRUE(hasRecognizableButtons(parseTree(button))) << button;
    for (const auto* button :
        {"Button \"允许本次删除\" \"取消删除\"", "Button", "Link \"取消删除\"",
            "Button \"允许本次删除\" \" \"", "Button\n  StaticText\n    StaticText \"取消删除\"",
            "Button\n  StaticText \"允许本\"\n  StaticText \"次删除\""})
        EXPECT_FALSE(hasRecognizableButtons(parseTree(button))) << button;
}

// Buttons in buttons, texts under texts, labels in pieces.
NativeApprovalNode randomNode(std::mt19937& random, int depth)
{
    static const std::vector<std::string> roles{"AXButton", "AXGroup", "AXStaticText"};
    static const std::vector<std::string> pieces{"1", "2", " . ", "：", " ", "允许本次删除",
        "1 允许本次删除", "取消删除", "\u30002、", "\v", "帮助", ""};
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

TEST(NativeApprovalClassifier, readsButtonsInButtonsAsTheOracleDoes)
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
