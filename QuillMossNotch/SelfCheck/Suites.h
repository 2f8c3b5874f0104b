// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>

namespace notch {

// The suites, in the order in which they run. Each returns the count of its failures.

int checkInteraction(std::ostream& out);
int checkMotion(std::ostream& out);
int checkQuestions(std::ostream& out);
int checkCompletions(std::ostream& out);

} // namespace notch
