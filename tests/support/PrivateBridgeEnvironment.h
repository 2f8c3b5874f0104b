// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/PrivateBridge.h"

#include <gtest/gtest.h>
#include <string>

namespace notch {

// The bridge directory is the test program's alone, from before its first thread on. Unless the
// reason is empty, it is not, and a test that would use it skips.
class PrivateBridge : public testing::Environment {
public:
    void SetUp() override { reason = enterPrivateBridge(); }
    static inline std::string reason;
};
inline const auto* const privateBridge = testing::AddGlobalTestEnvironment(new PrivateBridge);

} // namespace notch
