// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/MovingNotch.h"
#include "SelfCheck/Suite.h"

#include <algorithm>

namespace notch {
namespace {

// As TraceCheck, of a notch that moves.
constexpr TraceCheck layouts[] = {
    {"no frame is applied with widths that the content does not know yet",
        R"(layOut         | never
wait 1, widths | 8 480 236  400,0 480x32/236 narrow)"},
    {"the content turns to its open form before the panel grows, and back when it has shrunk",
        R"(layOut, wait 1    | 400,0 480x32/236 narrow
open, wait 0      | … expanded moving
wait 1            | 400,0 480xall/480 expanded
close, wait 0.249 | … expanded moving
wait 0.002        | 400,0 480x32/236 narrow)"},
    {"the completion of a closing that was reversed does not fold the content",
        R"(layOut, open, wait 1 | 400,0 480xall/480 expanded
close, wait 0.2      | … expanded moving
open, wait 0.05      | … expanded moving
wait 1               | 400,0 480xall/480 expanded)"},
    {"the notch follows a display that comes and goes",
        R"(layOut, wait 1               | 400,0 480x32/236 narrow
secondScreen, layOut, wait 0 | 1296,100 368x54/236 narrow
widths                       | 30 368 236  1296,100 368x54/236 narrow
firstScreen, layOut, wait 0  | 400,0 480x32/236 narrow
noScreen, open, wait 1       | 400,0 480x32/236 narrow expanded)"},
    {"with reduced motion the panel opens and closes at once",
        R"(reduced, layOut, open, wait 0 | 400,0 480xall/480 expanded
close, wait 0                 | 400,0 480x32/236 narrow)"},
    {"a panel out of sight is moved at once",
        R"(orderOut, layOut, open, wait 0 | 400,0 480xall/480 expanded
close, wait 0                  | 400,0 480x32/236 narrow)"},
    {"a height that is none is never applied",
        R"(layOut, wait 1             | 400,0 480x32/236 narrow
content 0, open, wait 1    | 400,0 480x32/236 narrow expanded
content -1, layOut, wait 1 | 400,0 480x32/236 narrow expanded
content inf, layOut, wait 1 | 400,0 480x32/236 narrow expanded
content nan, layOut, wait 1 | 400,0 480x32/236 narrow expanded)"},
    {"the transparent sides belong to what lies below: the pointer is inside on the surface only",
        R"(layOut, open, wait 1, point 640 40, hit     | 400,0 480xall/480 expanded inside
point 403 1, hit                            | 400,0 480xall/480 expanded
close, wait 1, point 640 10, hit, wait 0    | 400,0 480x32/236 narrow inside
point 450 10, hit                           | 400,0 480x32/236 narrow
point 640 10, hit, wait 0                   | 400,0 480x32/236 narrow inside
otherDesktop, hit                           | 400,0 480x32/236 narrow
point 640 10, hit, orderOut, hit            | 400,0 480x32/236 narrow)"},
    {"the pointer is found out anew at every step, as the surface moves away from under it",
        R"(layOut, open, wait 1, point 640 100, hit | 400,0 480xall/480 expanded inside
off autoCollapse, close, wait 1          | 400,0 480x32/236 narrow)"},
    {"a closed notch gives the keyboard back",
        R"(layOut, open, wait 1, focus | 400,0 480xall/480 expanded key
close, wait 0               | … expanded moving)"},
};

constexpr TraceCheck clicks[] = {
    {"a click before the guard is over decides nothing, also when the reveal is",
        R"(layOut, ask A, wait 0.4, clickOn decision-allow, calls | 400,0 480xall/480 expanded
wait 0.1, clickOn decision-allow, calls                | server.decide A allow  400,0 480xall/480 expanded
clickOn decision-allow, calls                          | 400,0 480xall/480 expanded)"},
    {"a click on the buttons of a notch that closes decides nothing",
        R"(layOut, ask A, wait 1, close, clickOn decision-allow | 400,0 480xall/480 expanded
wait 0.1, clickOn decision-allow, calls              | … expanded moving
wait 1, clickOn decision-allow, calls                | 400,0 480x32/236 narrow)"},
    {"a click right after a reversal decides nothing",
        R"(layOut, ask A, wait 1, close, wait 0.1, open, wait 0.1 | … expanded moving
clickOn decision-allow, calls                          | … expanded moving
wait 1, clickOn decision-allow, calls                  | server.decide A allow  400,0 480xall/480 expanded)"},
    {"a press that is held while the notch closes and opens again decides nothing",
        R"(layOut, ask A, wait 1, pressOn decision-allow           | 400,0 480xall/480 expanded
close, wait 1, open, wait 1, releaseOn decision-allow, calls | 400,0 480xall/480 expanded)"},
    {"a press that is held while another request takes the place decides nothing",
        R"(layOut, ask A, ask B, wait 1, pressOn decision-allow             | 400,0 480xall/480 expanded
switch 1, wait 1, releaseOn decision-allow, calls | 400,0 480xall/480 expanded)"},
    {"a press and its release on an armed button decide once",
        R"(layOut, ask A, ask B, wait 1, pressOn decision-deny        | 400,0 480xall/480 expanded
releaseOn decision-deny, releaseOn decision-deny, calls | server.decide A deny  400,0 480xall/480 expanded)"},
};

void play(Suite& suite, std::span<const TraceCheck> checks)
{
    for (const auto& [text, trace, frame] : checks) {
        const auto expected = std::string(trace) + '\n';
        suite.check(text, MovingNotch().played(expected), expected);
    }
}

double heightAfter(const char* operations)
{
    MovingNotch notch;
    notch.play(std::string("layOut, ") + operations + ", wait 1");
    return notch.panel.current.height;
}

void checkMeasuredHeight(Suite& suite)
{
    const double idle = heightAfter("open");
    const double request = heightAfter("ask A");
    suite.check("the open panel is as high as its content: a request is higher than an idle notch",
        idle > 32 && request > idle);
    suite.check("a receipt is lower than its request, and the panel shrinks to it",
        heightAfter("ask A, wait 1, allow A") < request);
    suite.check("a second request adds the row that switches between them",
        heightAfter("ask A, ask B") > request);
    suite.check("the longest request stays on the screen", heightAfter("long A, long B") <= 800);
    suite.check("folding the details gives their height back",
        heightAfter("ask A, wait 1, details, wait 1, command") == request);
}

// All that is asked of the content and the panel at each frame of an opening and a closing.
void checkEachFrame(Suite& suite)
{
    MovingNotch notch;
    notch.play("layOut, ask A, wait 1");
    auto& viewport = notch.panel.viewport();
    const QWidget& content = viewport.hosting();
    const QRect whole = content.geometry();
    bool pinned = true;
    bool sameSurface = true;
    notch.panel.frameApplied = [&] {
        pinned = pinned && (!notch.animator.isAnimating() || content.geometry() == whole);
        const auto shape = viewport.silhouette();
        sameSurface = sameSurface && shape.height() == notch.panel.current.height
                   && viewport.surfaceWidth() == notch.animator.surfaceWidth();
    };
    const auto first = notch.panel.applied.size();
    notch.play("close, wait 0.1, open, wait 0.1, close, wait 1");
    const auto frames = notch.panel.applied.size() - first;
    suite.check("the content keeps its size and its place at the top while the panel shrinks",
        frames > 10 && pinned && whole.topLeft() == QPoint(0, 0) && whole.width() == 480);
    suite.check("the drawn surface, the clip and the frame change as one at every step",
        frames > 10 && sameSurface);
}

void checkDetailsInPlace(Suite& suite)
{
    MovingNotch notch;
    notch.play("layOut, ask A, wait 1");
    const auto* view = &notch.panel.viewport().hosting();
    const auto* allow = notch.find("decision-allow");
    const auto* section = notch.find("approval");
    notch.play("details, wait 1");
    suite.check("details unfold in the surface that is there: nothing of it is built anew",
        allow && section && view == &notch.panel.viewport().hosting()
            && allow == notch.find("decision-allow") && section == notch.find("approval")
            && notch.isArmed("decision-allow") && notch.panel.current.width == 480);
}

void checkButtons(Suite& suite)
{
    MovingNotch notch;
    notch.play("layOut, ask A, wait 0.4");
    suite.check("the buttons that decide are there at once, and disabled until the guard is over",
        notch.find("decision-allow") && notch.find("decision-deny")
            && !notch.isArmed("decision-allow") && !notch.isArmed("decision-deny"));
    notch.play("wait 0.1");
    suite.check("the buttons that decide are enabled then",
        notch.isArmed("decision-allow") && notch.isArmed("decision-deny"));
}

} // namespace

void checkLayout(Suite& suite)
{
    play(suite, layouts);
    checkMeasuredHeight(suite);
    checkEachFrame(suite);
    checkDetailsInPlace(suite);
    checkButtons(suite);
    play(suite, clicks);
}

} // namespace notch
