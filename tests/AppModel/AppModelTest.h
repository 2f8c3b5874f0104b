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

} // namespace notch
