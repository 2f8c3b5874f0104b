// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Utf8.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

TEST(Utf8, acceptsShortestFormsWithoutSurrogates)
{
    struct Row {
        const char* name;
        std::string_view text;
        bool valid;
    };
    for (const auto& row : {
             Row{"last scalar of each length", "\x7F\xDF\xBF\xEF\xBF\xBF\xF4\x8F\xBF\xBF", true},
             Row{"first scalar of each length", "\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80", true},
             Row{"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", true},
             Row{"first surrogate", "\xED\xA0\x80", false},
             Row{"overlong, two bytes", "\xC1\xBF", false},
             Row{"overlong, three bytes", "\xE0\x9F\xBF", false},
             Row{"overlong, four bytes", "\xF0\x8F\xBF\xBF", false},
             Row{"beyond the last scalar", "\xF4\x90\x80\x80", false},
             Row{"lone continuation", "\x80", false},
             Row{"cut after two of four bytes", "\xF0\x9F", false},
             Row{"continuation missing in the middle", "\xE4(\xAD", false},
         })
        EXPECT_EQ(isUtf8(row.text), row.valid) << row.name;
}

TEST(Utf8, cutsBehindWholeScalars)
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
