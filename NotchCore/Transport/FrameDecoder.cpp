// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/FrameDecoder.h"

namespace notch {

FrameDecoder::State FrameDecoder::append(std::string_view piece)
{
    if (piece.empty() || state_ == State::failed)
        return state_;
    const auto line = piece.substr(0, piece.find('\n'));
    const bool ends = line.size() < piece.size();
    const bool somethingAfter =
        state_ == State::complete || (ends && line.size() + 1 < piece.size());
    if (somethingAfter || line.size() > maximumPayload_ - payload_.size())
        return state_ = State::failed;
    payload_ += line;
    return state_ = ends ? State::complete : State::incomplete;
}

} // namespace notch
