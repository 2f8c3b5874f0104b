// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace notch {

// Puts one message together from the pieces in which it arrives. A message is one line: the payload
// and a line feed, with nothing after it.
//
//   state       after
//   incomplete  pieces without a line feed, within the limit
//   complete    a piece that ends with the first line feed; payload() is the message
//   failed      too many bytes, or bytes after the line feed; it stays failed
class FrameDecoder {
public:
    enum class State : std::uint8_t { failed, incomplete, complete };

    // `maximumPayload` does not count the line feed.
    explicit FrameDecoder(std::size_t maximumPayload)
        : maximumPayload_(maximumPayload)
    {
    }

    State append(std::string_view piece);
    State state() const { return state_; }
    // The message, without its line feed, when complete.
    const std::string& payload() const& { return payload_; }
    std::string payload() && { return std::move(payload_); }

private:
    std::size_t maximumPayload_;
    State state_ = State::incomplete;
    std::string payload_;
};

} // namespace notch
