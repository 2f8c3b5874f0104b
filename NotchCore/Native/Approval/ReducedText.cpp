// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ReducedText.h"

#include "Native/Approval/CardTexts.h"
#include "Unicode/Scalars.h"

#include <cstddef>
#include <utility>

namespace notch {
namespace {

// Above the longest that can match: a number, the allow label, and the runs around both.
constexpr std::size_t longEnough = 32;

constexpr std::u32string_view punctuation = U".、：:";

} // namespace

void ReducedText::append(std::string_view text)
{
    if (text.empty())
        return;
    if (!text_.empty())
        add(U' ', " ");
    for (ScalarReader reader(text); !reader.atEnd() && text_.size() < longEnough;) {
        const auto scalar = reader.next();
        add(scalar, reader.bytes());
    }
}

void ReducedText::prepend(ReducedText before)
{
    before.append(text_);
    text_ = std::move(before.text_);
}

void ReducedText::add(char32_t scalar, std::string_view bytes)
{
    const bool isMark = punctuation.find(scalar) != std::u32string_view::npos;
    // Unsafe characters stay as they are, so that the text is no label.
    const bool isBlank = isWhiteSpace(scalar) && !hasUnsafeScalars(bytes);
    if (!isMark && !isBlank) {
        text_ += bytes;
        return;
    }
    const bool continuesRun = text_.ends_with(' ') || text_.ends_with('.');
    if (!continuesRun)
        text_ += ' ';
    if (isMark)
        text_.back() = '.';
}

} // namespace notch
