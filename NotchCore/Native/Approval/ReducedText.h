// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace notch {

// A text of bounded size from which normalizedButtonLabel() reads the same as from the whole. Both
// label patterns pass over any number of blanks and punctuation marks in the same place, so a run
// of these shrinks to one; and a text that is longer than every label without its runs has none.
class ReducedText {
public:
    // Joins with one blank, unless one of both is empty.
    void append(std::string_view text);
    void prepend(ReducedText before);

    const std::string& text() const { return text_; }

private:
    void add(char32_t scalar, std::string_view bytes);

    std::string text_; // A run is one ' ' if it is all blank, else one '.'.
};

} // namespace notch
