// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"

#include <gtest/gtest.h>
#include <limits>

namespace notch {
namespace {

using namespace std::string_literals;

std::string nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Json, refusesWhatTheStandardRefuses)
{
    for (const auto& text : {""s, "  "s, "\xEF\xBB\xBF{}"s, "{} x"s, "{}{}"s, "{}\0"s, "{} // x"s,
             "[1,]"s, "[01]"s, "[1.]"s, "[NaN]"s, "{'a':1}"s, "[\"a"s, "[\"a\nb\"]"s,
             R"(["\ud800"])"s, R"(["\udc00"])"s, "[\"\xED\xA0\x80\"]"s, "[\"\xC0\x80\"]"s,
             "[\"\xE4\xBD\"]"s, nested(Json::maximumDepth + 1), std::string(1 << 20, '[')})
        EXPECT_FALSE(Json::parse(text)) << testing::PrintToString(text.substr(0, 40));
}

TEST(Json, keepsDepthAndNumbersAsTheyWereWritten)
{
    const auto digits = std::string(400, '9');
    for (const auto& text : {nested(Json::maximumDepth), "[-0.0]"s, "[1.10]"s, "[1E+05]"s,
             "[1e400]"s, "[" + digits + "." + digits + "]", "[18446744073709551616]"s,
             "[0.1000000000000000055511151231257827]"s}) {
        const auto document = Json::parse(text);
        ASSERT_TRUE(document) << text;
        EXPECT_EQ(document->compact(), text);
    }
}

TEST(Json, comparesNumbersByValue)
{
    for (const auto& [a, b, equal] : std::vector<std::tuple<const char*, const char*, bool>>{
             {"60", "60.0", true},
             {"60", "6e1", true},
             {"0.060E+3", "60", true},
             {"-0.0", "0e5", true},
             {"1e400", "10e399", true},
             {"1e400", "1e401", false},
             {"9007199254740993", "9007199254740992", false},
             {"60", "-60", false},
             {"60", "\"60\"", false},
             {"1", "true", false},
         })
        EXPECT_EQ(*Json::parse(a) == *Json::parse(b), equal) << a << " and " << b;
}

TEST(Json, writesThePrescribedLayout)
{
    const auto document = Json::parse(
        R"({"b":[1,{"x":true,"a":null},[]],"a/c":"汉\u001f\"\\\/\b\f\n\r\t\u007f","b2":{},"B":0,"b":[2,3]})");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pretty(), "{\n"
                                  "  \"B\" : 0,\n"
                                  "  \"a/c\" : \"汉\\u001f\\\"\\\\/\\b\\f\\n\\r\\t\x7f\",\n"
                                  "  \"b\" : [\n"
                                  "    2,\n"
                                  "    3\n"
                                  "  ],\n"
                                  "  \"b2\" : {}\n"
                                  "}");
    EXPECT_EQ(Json::parse(document->pretty()), document);
    EXPECT_EQ(Json::parse(document->compact()), document);
}

TEST(Json, writesInPiecesWhatItWritesAsAWhole)
{
    const Json document = Json::Array(50'000, Json("twenty bytes of text"));
    std::string text;
    document.pretty([&](std::string_view piece) {
        text += piece;
        EXPECT_LT(piece.size(), 100'000U);
    });
    EXPECT_EQ(text, document.pretty());
}

TEST(Json, writesDoublesThatReadBackAsTheSame)
{
    for (const double value : {0.1, 1.0 / 3, 785523422.8459001, 5e15 + 1, 123456789012345678.0,
             1e22, 1e300, std::numeric_limits<double>::max(), -5e-324, 0.0})
        EXPECT_EQ(Json::parse(Json(JsonNumber(value)).compact())->number()->toDouble(), value);
}

} // namespace
} // namespace notch
