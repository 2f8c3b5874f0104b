// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/InteractionTrace.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

struct Trace {
    const char* name;
    const char* text;
};

const Trace traces[] = {
    {"counts a click only after the guard and before expiry",
        R"(at 0.00 can A                                    | no  closed ready never
at 0.00 receive A until 50, can A, at 0.44 can A | yes  no  no  open [A] ready 0.45
at 0.45 can A, can B, at 49.99 can A             | yes  no  yes  open [A] ready 0.45
at 50.00 can A                                   | no  open [A] ready 0.45
)"},
    {"refuses what may not wait",
        R"(at 1.00 receive A until 1, receive question A until 50 | no  no  closed ready never
at 1.00 receive foreign A until 50                     | no  closed ready never
at 1.00 receive A until nan                            | no  closed ready never
at nan receive A until 50                              | no  closed ready never
at 1.00 receive native A until 50                      | yes  open [A] ready 1.45
at 1.00 collapse, at 2.00 receive B until 2            | no  closed [A] ready 1.45
at 2.00 receive A until 50                             | no  closed [A] ready 1.45
)"},
    {"keeps the request on screen when another arrives",
        R"(at 0.00 receive A until 50                   | yes  open [A] ready 0.45
at 0.20 details                              | open [A] ready 0.45 details
at 0.20 receive B until 50                   | yes  open [A] B ready 0.45 details
at 1.00 collapse, can A                      | no  closed [A] B ready 0.45 details
at 1.00 receive C until 50                   | yes  open [A] B C ready 1.45 details
at 2.00 select C, at 2.40 select C, select X | open A B [C] ready 2.45
at 2.50 gone B                               | open A [C] ready 2.45
at 3.00 select A                             | open [A] C ready 3.45
at 4.00 receive D until 50                   | yes  open [A] C D ready 3.45
)"},
    {"arms anew when it is opened again",
        R"(at 0.00 receive A until 50, at 1.00 expand   | yes  open [A] ready 0.45
at 1.00 collapse                             | closed [A] ready 0.45
at 2.00 expand, at 2.44 can A, at 2.45 can A | no  yes  open [A] ready 2.45
)"},
    {"opens by hover only after the pointer has left once",
        R"(at 0.00 enter              | yes  closed ready never inside
at 0.00 expand, enter      | no  open ready 0.45 inside
at 0.00 collapse, enter    | no  closed ready 0.45 inside blocked
at 0.00 leave              | closed ready 0.45
at 0.00 enter              | yes  closed ready 0.45 inside
at 0.00 leave, collapse    | closed ready 0.45
at 0.00 enter              | yes  closed ready 0.45 inside
at 0.00 details, collapse  | closed ready 0.45 inside blocked details
at 1.00 receive A until 50 | yes  open [A] ready 1.45 inside
at 1.00 collapse           | closed [A] ready 1.45 inside blocked
at 2.00 expand             | open [A] ready 2.45 inside
)"},
    {"cannot replay a click through a receipt",
        R"(at 0.00 receive A until 50, receive B until 50   | yes  yes  open [A] B ready 0.45
at 0.00 receive native C until 50                | yes  open [A] B C ready 0.45
at 1.00 details, finish X allowed                | open [A] B C ready 0.45 details
at 1.00 finish A allowed                         | open [B] C ready never receipt allowed
at 1.00 can A, at 9.00 can B, select C           | no  no  open [B] C ready never receipt allowed
at 10.00 dismiss, at 10.44 can B, at 10.46 can B | no  yes  open [B] C ready 10.45
at 11.00 finish C denied demo                    | open [B] ready never receipt denied demo native
at 11.00 finish B returned                       | open ready never receipt returned
at 12.00 dismiss                                 | open ready 12.45
)"},
    {"moves the selection to the head whatever is finished",
        R"(at 0.00 receive A until 50, receive B until 50 | yes  yes  open [A] B ready 0.45
at 0.00 receive C until 50                     | yes  open [A] B C ready 0.45
at 1.00 select C                               | open A B [C] ready 1.45
at 2.00 finish B denied                        | open [A] C ready never receipt denied
)"},
    {"tells only of a hook on screen that it is gone",
        R"(at 0.00 receive A until 50, receive B until 50 | yes  yes  open [A] B ready 0.45
at 0.00 receive C until 50                     | yes  open [A] B C ready 0.45
at 1.00 details                                | open [A] B C ready 0.45 details
at 1.00 gone B, gone B, can A                  | yes  open [A] C ready 0.45 details
at 49.99 gone A                                | open [C] ready never receipt unavailable
at 50.00 gone C                                | open ready never receipt unavailable
at 51.00 dismiss                               | open ready 51.45
at 52.00 receive native D until 60             | yes  open [D] ready 52.45
)"},
    {"tells of a native request that it expired",
        R"(at 0.00 receive native A until 5 | yes  open [A] ready 0.45
at 5.00 gone A                   | open ready never receipt expired native
at 5.00 receive B until 50       | yes  open [B] ready 5.45 receipt expired native
)"},
};

TEST(NotchInteraction, goesAsWritten)
{
    for (const auto& [name, text] : traces)
        EXPECT_EQ(playTrace(text), text) << name;
}

} // namespace
} // namespace notch
