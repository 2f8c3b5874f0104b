// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/FrameDecoder.h"

#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace notch {
namespace {

using State = FrameDecoder::State;

constexpr std::size_t limit = 8;

TEST(FrameDecoder, yieldsOneLineAndRefusesWhatIsNoLine)
{
    struct Row {
        const char* name;
        std::vector<std::string> pieces;
        State state;
        std::string payload;
    };
    for (const auto& row : {
             Row{"nothing yet", {}, State::incomplete, ""},
             Row{"one piece", {"abc\n"}, State::complete, "abc"},
             Row{"several pieces", {"a", "b", "c\n"}, State::complete, "abc"},
             Row{"empty line", {"\n"}, State::complete, ""},
             Row{"line feed alone behind the bytes", {"abc", "\n"}, State::complete, "abc"},
             Row{"as much as fits", {"12345678\n"}, State::complete, "12345678"},
             Row{"as much as fits, without its end", {"12345678"}, State::incomplete, ""},
             Row{"as much as fits, its end alone", {"12345678", "\n"}, State::complete, "12345678"},
             Row{"one byte more", {"123456789\n"}, State::failed, ""},
             Row{"one byte more, without its end", {"123456789"}, State::failed, ""},
             Row{"one byte more in a second piece", {"12345678", "9"}, State::failed, ""},
             Row{"one byte more with the end", {"12345678", "9\n"}, State::failed, ""},
             Row{"a byte behind the line", {"abc\nd"}, State::failed, ""},
             Row{"two lines in one piece", {"a\nb\n"}, State::failed, ""},
             Row{"two line feeds", {"a\n\n"}, State::failed, ""},
             Row{"a piece behind the line", {"a\n", "b"}, State::failed, ""},
             Row{"a good line behind a failure", {"a\nb", "c\n"}, State::failed, ""},
         }) {
        FrameDecoder decoder(limit);
        for (const auto& piece : row.pieces)
            decoder.append(piece);
        EXPECT_EQ(decoder.state(), row.state) << row.name;
        if (row.state == State::complete) {
            EXPECT_EQ(decoder.payload(), row.payload) << row.name;
        }
    }
}

TEST(FrameDecoder, yieldsTheSameHoweverTheLineIsCut)
{
    const std::string line = "a\xE6\xB1\x89\r\\n\n";
    for (std::size_t first = 0; first <= line.size(); ++first) {
        for (std::size_t second = first; second <= line.size(); ++second) {
            FrameDecoder decoder(limit);
            decoder.append(line.substr(0, first));
            decoder.append(line.substr(first, second - first));
            decoder.append(line.substr(second));
            EXPECT_EQ(decoder.state(), State::complete) << first << ", " << second;
            EXPECT_EQ(decoder.payload() + "\n", line) << first << ", " << second;
        }
    }
}

} // namespace
} // namespace notch
