// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/StartedModel.h"

#include <gtest/gtest.h>

namespace notch {

// A model of the traces' language, once more for each test.
class AppModelTest : public testing::Test, protected StartedModel {
protected:
    void expectTrace(std::string_view trace) { EXPECT_EQ(played(trace), trace); }
};

// Each line on a model of its own, its operations in the place of "..." in `frame`.
inline void expectEach(const std::string& frame, std::string_view trace)
{
    const auto after = [&](const std::string& operations) {
        return StartedModel().after(std::string(frame).replace(frame.find("..."), 3, operations));
    };
    EXPECT_EQ(retold(trace, after), trace);
}

} // namespace notch
