// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// Tells whether two scans saw pages of the same question card, and gives the card one id for as
// long as it lasts. A flow ends with two absences in a row, or when something else is seen in its
// place; a scan that could not be read neither ends nor prolongs it.
class QuestionFlowIdentity {
public:
    void reset();
    void observeUnavailable();
    void observeAbsence();

    // The flow's id, an upper-case UUID text; nothing if the sighting is malformed, which leaves
    // the flow as it is. `binding` is what ties scans to the same card. A page turned back and
    // forth keeps the flow; another title on a page already seen starts a new one.
    std::optional<std::string> identify(std::string_view binding, std::int32_t pid,
        std::string_view title, int currentPage, int totalPages);

private:
    struct Epoch {
        std::string flowID;
        std::string binding;
        std::int32_t pid = 0;
        int totalPages = 0;
        std::map<int, std::string> titles; // By page; at most totalPages of them.
    };

    std::optional<Epoch> epoch_;
    int absenceCount_ = 0;
};

} // namespace notch
