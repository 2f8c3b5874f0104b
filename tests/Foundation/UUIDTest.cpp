// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/UUID.h"

#include <gtest/gtest.h>
#include <string>

namespace notch {
namespace {

TEST(UUID, readsOnlyTheCanonicalForm)
{
    EXPECT_EQ(UUID::parse("6f9619ff-8b86-d011-b42d-00Cf4Fc964Ff").value().text(),
        "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
    for (const char* text :
        {"", "6F9619FF-8B86-D011-B42D-00CF4FC964F", "6F9619FF-8B86-D011-B42D-00CF4FC964FF0",
            "6F9619FF8-B86-D011-B42D-00CF4FC964FF", "6F9619FG-8B86-D011-B42D-00CF4FC964FF",
            "{6F9619FF-8B86-D011-B42D-00CF4FC964F}", " F9619FF-8B86-D011-B42D-00CF4FC964FF"})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(UUID, randomOnesAreVersion4AndDiffer)
{
    const auto text = UUID::random().text();
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
    EXPECT_NE(UUID::random().text(), text);
}

} // namespace
} // namespace notch
