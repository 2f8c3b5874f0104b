// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cassert>
#include <utility>
#include <variant>

namespace notch {

template <class E> struct Failure {
    E error;
};
template <class E> Failure(E) -> Failure<E>;

// A value, or the reason there is none.
template <class T, class E> class [[nodiscard]] Result {
public:
    Result(T value)
        : state_(std::in_place_index<0>, std::move(value))
    {
    }
    Result(Failure<E> failure)
        : state_(std::in_place_index<1>, std::move(failure.error))
    {
    }

    bool ok() const { return state_.index() == 0; }
    const T& value() const&
    {
        assert(ok());
        return *std::get_if<0>(&state_);
    }
    T&& value() &&
    {
        assert(ok());
        return std::move(*std::get_if<0>(&state_));
    }
    const E& error() const
    {
        assert(!ok());
        return *std::get_if<1>(&state_);
    }

    friend bool operator==(const Result&, const Result&) = default;

private:
    std::variant<T, E> state_; // T and E may be the same type.
};

} // namespace notch
