// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/NativeQuestionClassifier.h"

#include "Mutation.h"
#include "Oracle.h"

#include <gtest/gtest.h>

#include <sstream>

namespace notch {
namespace {

using namespace NativeQuestionClassifier;

const std::string cardTree = R"(
Window #w @0,0,2000,2000
  Group #page
    Group #card @0,0,600,800
      StaticText #title @20,20,300,24 "选择哪一个数据库？\n可以以后再改"
      Button #previous @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "2"
      StaticText #separator @400,22,10,20 "/"
      StaticText #total @414,22,20,20 "3"
      Button #next @440,16,32,32 "下一题"
        Image #nextImage @452,28,8,8
      Button #skip @478,16,32,32 "全部跳过"
        Image #skipImage @490,28,8,8
      Button #row1 @16,64,560,40 "1 本地 文件"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本地 文件"
        Image #image1 @550,74,16,20
      Button #row2 @16,112,560,40 "2 远程服务器"
        StaticText #number2 @24,122,16,20 "2"
        StaticText #label2 @48,122,400,20 "远程服务器"
        Image #image2 @550,122,16,20
      TextField #other "其他"
)";

TEST(NativeQuestionClassifier, namesThePartsOfACard)
{
    EXPECT_EQ(uniqueMatch(parseTree(cardTree)),
        (NativeQuestionMatch{.windowID = "w",
            .containerID = "card",
            .anchorID = "skip",
            .contextNodeIDs = {"title", "previous", "previousImage", "current", "separator",
                "total", "next", "nextImage", "skip", "skipImage"},
            .title = "选择哪一个数据库？\n可以以后再改",
            .currentPage = 2,
            .totalPages = 3}));
    EXPECT_EQ(uniqueMatch({}), std::nullopt);
    EXPECT_FALSE(hasRecognizableQuestion({}));
}

const std::string title = R"("选择哪一个数据库？\n可以以后再改")";

const std::vector<Mutation> spoiltCards{
    {"no window", "Window #w", "Group #w"},
    {"window without a frame", "@0,0,2000,2000", ""},
    {"window without an area", "@0,0,2000,2000", "@0,0,2000,0"},
    {"hidden window", "#w", "#w -visible"},
    {"disabled ancestor", "#page", "#page -enabled"},
    {"hidden ancestor", "#page", "#page -visible"},
    {"ancestor without an area", "#page", "#page @0,0,0,0"},
    {"window in the window", "Group #page", "Window #page"},
    {"empty id", "#page", "#-"},
    {"id twice", "#page", "#other"},
    {"second skip button, hidden", "  Group #page",
        "  Button -visible \"全部跳过\"\n  Group #page"},
    {"second next button in another window", "Window #w",
        "Window #v\n  Button \"下一题\"\nWindow #w"},
    {"second label on a button", R"("上一题")", R"("上一题" "下一题")"},
    {"two texts on a button", R"("上一题")", R"("上一题" "x")"},
    {"no previous button", "上一题", "上一页"},
    {"no group", "Group #card", "List #card"},
    {"hidden group", "#card", "#card -visible"},
    {"disabled group", "#card", "#card -enabled"},
    {"group without a frame", " @0,0,600,800", ""},
    {"title is no text", "StaticText #title", "Heading #title"},
    {"title disabled", "#title", "#title -enabled"},
    {"title hidden", "#title", "#title -visible"},
    {"title without a frame", "@20,20,300,24", ""},
    {"title with a child", "      Button #previous ", "        Image\n      Button #previous "},
    {"two titles", title, R"("a" "b")"},
    {"no title", title, ""},
    {"blank title", title, R"("  ")"},
    {"loading", title, R"("加载中")"},
    {"placeholder", title, R"(" Title ")"},
    {"send", title, R"("SEND")"},
    {"label as title", title, R"("全部跳过")"},
    {"digits as title", title, R"("123")"},
    {"other digits as title", title, "\"\u0661\u0662\""},
    {"shortened title", title, R"("a...b")"},
    {"shortened title, one sign", title, R"("a…")"},
    {"shortened title, raised dots", title, R"("a⋯")"},
    {"template, opening", title, R"("a {{x")"},
    {"template, closing", title, R"("a }}x")"},
    {"template, variable", title, R"("a ${x")"},
    {"template, tag", title, R"("a <placeholder>")"},
    {"title with a tab", title, "\"a\tb\""},
    {"title with a joiner", title, "\"a\u200Db\""},
    {"title with a line separator", title, "\"a\u2028b\""},
    {"button without an image", "        Image #nextImage @452,28,8,8\n", ""},
    {"button with two images", "        Image #nextImage",
        "        Image\n        Image #nextImage"},
    {"button with a text", "Image #nextImage", "StaticText #nextImage"},
    {"button image with words", "@452,28,8,8", "@452,28,8,8 \"x\""},
    {"button image hidden", "#nextImage", "#nextImage -visible"},
    {"button image without a frame", "@452,28,8,8", ""},
    {"button image with a child", "      Button #skip", "          Image\n      Button #skip"},
    {"button hidden", "#next ", "#next -visible "},
    {"button without a frame", "@440,16,32,32", ""},
    {"button is none", "Button #next ", "Link #next "},
    {"skip disabled", "#skip ", "#skip -enabled "},
    {"no page", R"("2")", R"("0")"},
    {"no page, and none before it",
        R"(#previous @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "2")",
        R"(#previous -enabled @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "0")"},
    {"leading zero", R"("2")", R"("02")"},
    {"page with a letter", R"("2")", R"("2a")"},
    {"page is no text", "StaticText #current", "Image #current"},
    {"page disabled", "#current", "#current -enabled"},
    {"other separator", R"("/")", R"("|")"},
    {"separator hidden", "#separator", "#separator -visible"},
    {"total below current", R"("3")", R"("1")"},
    {"too many pages", R"("3")", R"("101")"},
    {"previous disabled on page 2", "#previous ", "#previous -enabled "},
    {"next disabled before the last page", "#next ", "#next -enabled "},
    {"next enabled on the last page", R"("3")", R"("2")"},
    {"previous enabled on page 1", R"("2")", R"("1")"},
    {"stranger in the header", "      StaticText #total", "      Image\n      StaticText #total"},
    {"row is no button", "Button #row1", "Group #row1"},
    {"row disabled", "#row2 ", "#row2 -enabled "},
    {"row hidden", "#row2 ", "#row2 -visible "},
    {"row without a frame", "@16,112,560,40", ""},
    {"row with four parts", "      TextField", "        Image\n      TextField"},
    {"row of number and image", "        StaticText #label2 @48,122,400,20 \"远程服务器\"\n", ""},
    {"row that says more", "2 远程服务器", "2 远程服务器 推荐"},
    {"row that says less", "2 远程服务器", "远程服务器"},
    {"rows out of order", R"(20 "1")", R"(20 "2")"},
    {"row without a number",
        R"("2 远程服务器"
        StaticText #number2 @24,122,16,20 "2")",
        R"("x 远程服务器"
        StaticText #number2 @24,122,16,20 "x")"},
    {"row number skipped", R"(20 "2"
        StaticText #label2)",
        R"(20 "3"
        StaticText #label2)"},
    {"number disabled", "#number1", "#number1 -enabled"},
    {"number hidden", "#number1", "#number1 -visible"},
    {"number without a frame", "@24,74,16,20", ""},
    {"label disabled", "#label1", "#label1 -enabled"},
    {"label is no text", "StaticText #label2", "Link #label2"},
    {"label without a frame", "@48,74,400,20", ""},
    {"label of two lines", R"(20 "本地 文件")", R"(20 "本地\n文件")"},
    {"label cut short", R"(1 本地 文件"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本地 文件")",
        R"(1 本…"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本…")"},
    {"row image is none", "Image #image2", "StaticText #image2"},
    {"row image with words", "@550,122,16,20", "@550,122,16,20 \"x\""},
    {"row image hidden", "#image2", "#image2 -visible"},
    {"number after the rows", "TextField #other", "StaticText \"3\"\n      TextField #other"},
    {"numbered words after the rows", R"("其他")", R"("3 其他")"},
    {"number deep after the rows", "TextField #other \"其他\"",
        "Group\n        Link\n          StaticText \"20\"\n      TextField #other"},
};

const std::vector<Mutation> harmlessCards{
    {"page without a window's frame around it", "#page", "#page @0,0,1,1"},
    {"image in front of the card", "  Group #page", "  Image -visible\n  Group #page"},
    {"same text twice", R"("上一题")", R"("上一题" "" "上一题")"},
    {"blanks in the row's text", "1 本地 文件", "1\\n本地   文件"},
    {"page 1",
        "#previous @340,16,32,32 \"上一题\"\n        Image #previousImage @352,28,8,8\n"
        "      StaticText #current @376,22,20,20 \"2\"",
        "#previous -enabled @340,16,32,32 \"上一题\"\n        Image #previousImage @352,28,8,8\n"
        "      StaticText #current @376,22,20,20 \"1\""},
    {"last of 100 pages", R"("3")", R"("100")"},
    {"numbers that mark no page", R"("其他")", R"("21 其他" "3" "0 x")"},
    {"words that begin like a rejected title", title, R"("title of the book")"},
    {"tiny stranger at the end", "TextField #other", "Button \"帮助\"\n      TextField #other"},
};

void expectMatches(const std::vector<Mutation>& mutations, bool wanted)
{
    for (const auto& mutation : mutations) {
        const auto roots = mutated(cardTree, mutation);
        EXPECT_EQ(uniqueMatch(roots).has_value(), wanted) << mutation.name;
    }
}

TEST(NativeQuestionClassifier, refusesACardThatBreaksOneRule)
{
    expectMatches(spoiltCards, false);
}

TEST(NativeQuestionClassifier, acceptsWhatTheRulesPassOver)
{
    expectMatches(harmlessCards, true);
}

// By the number of the rule.
const std::vector<FrameRow> cardGeometry{
    {"1 low", "card*0.375", "previous.h-0.5"},
    {"1 high", "card*2", "previous.h+0.5"},
    {"2 wide", "next.w+2", "next.w+0.5"},
    {"2 narrow", "skip.w-2", "skip.w-0.5"},
    {"2 high", "skip.h+2 skip.y-1", "skip.h+0.5"},
    {"2 low", "next.h-2 next.y+1", "next.h-0.5"},
    {"2 middle", "next.y+2", "next.y+0.5"},
    {"3 low", "card*0.375 current.h-3.5 current.y+1.75", "current.h-0.5"},
    {"3 high", "separator.h+12 separator.y-6", "separator.h+0.5"},
    {"3 wide", "total.w+44 next.x+44 skip.x+44", "total.w+0.5"},
    {"3 middle", "current.y-2", "current.y-0.5"},
    {"4", "title.y+12", "title.y+0.5"},
    {"5", "title.h+488 row1.y+484 row2.y+484", "title.h+0.5"},
    {"6", "title.w+21", "title.w+0.5"},
    {"7", "title.w-44", "title.w-0.5"},
    {"8 low", "row1.h-8 row2.h-8", "row1.h-0.5"},
    {"8 high", "row1.h+56 row2.y+56 row2.h+56", "row1.h+0.5"},
    {"9",
        "title.w-290 previous.x-309 current.w-18 current.x-311 separator.w-8 separator.x-332 "
        "total.w-18 total.x-343 next.x-366 skip.x-370 row1.w-368 label1.w-380 image1.x-380 "
        "row2.w-368 label2.w-380 image2.x-380",
        "row1.w-0.5"},
    {"10 left", "title.x-4", "title.x-0.5"},
    {"10 right", "title.x+36 title.w-36", "title.x+0.5"},
    {"11", "row1.w-66 image1.x-66 row2.w-66 image2.x-66", "row1.w-0.5"},
    {"12 near", "row1.y-16", "row1.y-0.5"},
    {"12 far", "row1.y+48 row2.y+48", "row1.y+0.5"},
    {"13 near", "current.x-5", "current.x-0.5"},
    {"13 far", "total.x+28 next.x+28 skip.x+28", "total.x+0.5"},
    {"13 far, last pair", "skip.x+26", "skip.x+0.5"},
    {"14 left", "row2.x+2", "row2.x+0.5"},
    {"14 width", "row2.w+2", "row2.w+0.5"},
    {"14 height", "row2.h-2", "row2.h-0.5"},
    {"15 near", "row2.y-8", "row2.y-0.5"},
    {"15 far", "row2.y+24", "row2.y+0.5"},
    {"group in the window", "card.w+1400", "card.w+0.5"},
    {"row in the group", "card.w-24", "card.w-0.5"},
    {"image in its button", "skipImage.x+12", "skipImage.x+0.5"},
    {"image in its row", "image1.x+10", "image1.x+0.5"},
    {"number meets label", "label1.x-8", "label1.x-0.5"},
    {"label meets image", "label1.w+102", "label1.w+0.5"},
    {"label far from number", "label1.x+32", "label1.x+0.5"},
    {"number far from the edge", "number1.x+32 label1.x+32", "number1.x+0.5"},
    {"image far from the edge", "image1.x-30", "image1.x-0.5"},
    {"number off the line", "number1.y+2", "number1.y+0.5"},
    {"label off the line", "label1.y-2", "label1.y-0.5"},
    {"image off the line", "image1.y+2", "image1.y+0.5"},
};

TEST(NativeQuestionClassifier, holdsEachFrameRuleToItsBound)
{
    for (const auto& row : cardGeometry) {
        auto roots = parseTree(cardTree);
        editFrames(roots, row.atBound);
        EXPECT_TRUE(uniqueMatch(roots)) << row.name;
        editFrames(roots, row.step);
        EXPECT_FALSE(uniqueMatch(roots)) << row.name;
    }
}

TEST(NativeQuestionClassifier, agreesWithTheOracleOnEveryTwoChanges)
{
    auto changes = spoiltCards;
    changes.insert(changes.end(), harmlessCards.begin(), harmlessCards.end());
    for (const auto& row : cardGeometry)
        changes.push_back({.name = row.name, .frames = row.atBound});
    forEachPair(cardTree, changes, [](const auto& roots, const std::string& name) {
        ASSERT_EQ(uniqueMatch(roots), oracle::question(roots)) << name;
    });
}

std::string rows(int count)
{
    std::ostringstream lines;
    for (int number = 1; number <= count; ++number) {
        const auto text = std::to_string(number);
        const auto at = [&](int x, int down, int width, int height) {
            std::ostringstream place;
            place << " @" << x << ',' << 56 + 32 * number + down << ',' << width << ',' << height;
            return place.str();
        };
        lines << "      Button" << at(16, 0, 560, 32) << " \"" << text << " x\"\n"
              << "        StaticText" << at(24, 6, 16, 20) << " \"" << text << "\"\n"
              << "        StaticText" << at(48, 6, 400, 20) << " \"x\"\n"
              << "        Image" << at(550, 6, 16, 20) << '\n';
    }
    return lines.str();
}

TEST(NativeQuestionClassifier, takesOneToTwentyRows)
{
    const auto header = cardTree.substr(0, cardTree.find("      Button #row1"));
    const std::string end = "      TextField\n";
    EXPECT_FALSE(uniqueMatch(parseTree(header + end)));
    EXPECT_TRUE(uniqueMatch(parseTree(header + rows(1))));
    EXPECT_TRUE(uniqueMatch(parseTree(header + rows(20) + end)));
    EXPECT_FALSE(uniqueMatch(parseTree(header + rows(21) + end)));
}

TEST(NativeQuestionClassifier, holdsTextsToTheirLimits)
{
    const auto with = [](const std::string& from, const std::string& to) {
        return uniqueMatch(mutated(cardTree, {to.substr(0, 20), from, to, ""})).has_value();
    };
    const auto quoted = [](const std::string& text) { return '"' + text + '"'; };
    EXPECT_TRUE(with(title, quoted(std::string(4096, 'x'))));
    EXPECT_FALSE(with(title, quoted(std::string(4097, 'x'))));
    std::string lines = "x";
    for (int line = 2; line <= 16; ++line)
        lines += "\\nx";
    EXPECT_TRUE(with(title, quoted(lines)));
    EXPECT_FALSE(with(title, quoted(lines + "\\nx")));

    const auto withLabel = [](std::size_t bytes, std::size_t blanks) {
        auto text = cardTree;
        const std::string label(bytes, 'x');
        replaceIn(text, {"", "2 远程服务器", "2" + std::string(blanks, ' ') + label, ""});
        replaceIn(text, {"", "\"远程服务器\"", '"' + label + '"', ""});
        return uniqueMatch(parseTree(text)).has_value();
    };
    EXPECT_TRUE(withLabel(1024, 75)); // The row's own text has 1100 bytes.
    EXPECT_FALSE(withLabel(1024, 76));
    EXPECT_FALSE(withLabel(1025, 1));
}

TEST(NativeQuestionClassifier, holdsTheWalkToItsLimits)
{
    const auto withBefore = [](const std::string& more) {
        return uniqueMatch(parseTree(more + cardTree)).has_value();
    };
    std::string images = "Group\n";
    for (int image = 0; image < 20000 - 1 - 22; ++image)
        images += " Image\n";
    EXPECT_TRUE(withBefore(images));
    EXPECT_FALSE(withBefore(images + " Image\n"));

    std::string chain;
    for (std::size_t depth = 0; depth <= 128; ++depth)
        chain += std::string(2 * depth, ' ') + "Group\n";
    EXPECT_TRUE(withBefore(chain));
    EXPECT_FALSE(withBefore(chain + std::string(258, ' ') + "Group\n"));
}

TEST(NativeQuestionClassifier, seesControlsThatNoCardHas)
{
    EXPECT_TRUE(hasRecognizableQuestion(
        parseTree("Window\n  Group -visible\n    Button -visible \"x\" \"上一题\"")));
    EXPECT_FALSE(hasRecognizableQuestion(
        parseTree("Window\n  StaticText \"上一题\"\n  Button \"上一题 \"")));
}

} // namespace
} // namespace notch
