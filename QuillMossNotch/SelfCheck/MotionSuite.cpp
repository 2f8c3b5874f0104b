// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/Suite.h"
#include "SelfCheck/Suites.h"

namespace notch {

int checkMotion(std::ostream& out)
{
    Suite suite(out, "motion");
    checkLayout(suite);
    checkReveal(suite);
    checkSilhouette(suite);
    checkMask(suite);
    checkSettings(suite);
    return suite.end("Motion", "no real approvals or exits submitted");
}

} // namespace notch
