// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionReminder.h"

#include "Unicode/Scalars.h"

namespace notch {

bool QuestionReminder::isValid() const
{
    return !trimmed(flowID).empty() && !trimmed(title).empty() && pid >= 1 && currentPage >= 1
        && totalPages >= currentPage;
}

} // namespace notch
