// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SelfCheck/SelfCheck.h"

#include "SelfCheck/Suites.h"

#include <array>

namespace notch {

int runSelfCheck(std::ostream& out)
{
    constexpr std::array suites{checkInteraction, checkMotion, checkQuestions, checkCompletions};
    int failures = 0;
    for (const auto suite : suites)
        failures += suite(out);
    return failures == 0 ? 0 : 1;
}

} // namespace notch
