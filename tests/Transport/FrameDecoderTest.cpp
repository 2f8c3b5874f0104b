// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/FrameDecoder.h"

#include <gtest/gtest.h>
#include <sstream>

namespace notch {
namespace {

constexpr std::size_t limit = 8;

// What the decoder says after these pieces, which bars separate.
std::string decoded(const std::string& pieces)
{
    FrameDecoder decoder(limit);
    std::istringstream cut(pieces);
    for (std::string piece; std::getline(cut, piece, '|');)
        decoder.append(piece);
    if (decoder.state() == FrameDecoder::State::complete)
        return "complete " + decoder.payload();
    return decoder.state() == FrameDecoder::State::failed ? "failed" : "incomplete";
}

TEST(FrameDecoder, yieldsOneLineAndRefusesWhatIsNoLine)
{
    for (const auto& [pieces, expected] : std::vector<std::pair<std::string, std::string>>{
             {"", "incomplete"},
             {"\n", "complete "},
             {"12345678", "incomplete"},
             {"12345678\n", "complete 12345678"},
             {"12345678|\n", "complete 12345678"},
             {"123456789", "failed"},
             {"123456789\n", "failed"},
             {"12345678|9", "failed"},
             {"12345678|9\n", "failed"},
             {"abc\nd", "failed"},
             {"a\nb\n", "failed"},
             {"a\n|b", "failed"},
             {"a\nb|c\n", "failed"},
         })
        EXPECT_EQ(decoded(pieces), expected) << pieces;
}

TEST(FrameDecoder, yieldsTheSameHoweverTheLineIsCut)
{
    const std::string line = "a\xE6\xB1\x89\r\\n\n";
    for (std::size_t first = 0; first <= line.size(); ++first) {
        for (std::size_t second = first; second <= line.size(); ++second) {
            auto cut = line;
            cut.insert(second, "|").insert(first, "|");
            EXPECT_EQ(decoded(cut) + "\n", "complete " + line) << cut;
        }
    }
}

} // namespace
} // namespace notch
