// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Utf8.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

TEST(Utf8, acceptsShortestFormsWithoutSurrogatesAndRepairsTheRest)
{
    struct Row {
        const char* name;
        std::string_view text;
        std::string_view repaired = text;
    };
    for (const auto& row : {
             Row{"last scalar of each length", "\x7F\xDF\xBF\xEF\xBF\xBF\xF4\x8F\xBF\xBF"},
             Row{"first scalar of each length", "\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80"},
             Row{"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80"},
             Row{"first surrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
             Row{"overlong, two bytes", "\xC1\xBF", "\uFFFD\uFFFD"},
             Row{"overlong, three bytes", "\xE0\x9F\xBF", "\uFFFD\uFFFD\uFFFD"},
             Row{"overlong, four bytes", "\xF0\x8F\xBF\xBF", "\uFFFD\uFFFD\uFFFD\uFFFD"},
             Row{"beyond the last scalar", "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
             Row{"lone continuation", "a\x80z", "a\uFFFDz"},
             Row{"cut after two of four bytes", "\xF0\x9F", "\uFFFD"},
             Row{"continuation missing in the middle", "\xE4(\xAD", "\uFFFD(\uFFFD"},
         }) {
        EXPECT_EQ(isUtf8(row.text), row.text == row.repaired) << row.name;
        EXPECT_EQ(repairedUtf8(row.text), row.repaired) << row.name;
    }
}

TEST(Utf8, cutsAfterWholeScalars)
{
    EXPECT_EQ(firstScalars("会话abc", 3), "会话a");
    EXPECT_EQ(firstScalars("会话", 9), "会话");
    EXPECT_EQ(firstScalars("会话", 0), "");
}

TEST(Utf8, lowersNamesIncludingTheKelvinSign)
{
    EXPECT_EQ(lowercasedName("As\u212AUser_QUESTION会话\xE2\x84"), "askuser_question会话\xE2\x84");
}

} // namespace
} // namespace notch
