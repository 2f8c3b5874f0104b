// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WindowModule.h"

#include "AppDelegate/AppDelegate.h"
#include "AppDelegate/DesktopDependencies.h"
#include "AppDelegate/LaunchOptions.h"
#include "Platform/Accessibility/NativeDiagnosis.h"
#include "Platform/Display/X11.h"
#include "Platform/SingleInstance/SingleInstance.h"
#include "Platform/Toolkit/Toolkit.h"
#include "Preview/PreviewRender.h"
#include "Preview/ReminderPreview.h"
#include "SelfCheck/SelfCheck.h"
#include "Transport/Streams.h"

#include <iostream>
#include <malloc.h>
#include <string>
#include <string_view>
#include <vector>

namespace notch {
namespace {

constexpr int success = 0;
constexpr int failure = 1;

int complain(std::string_view text)
{
    std::cerr << text << '\n';
    return failure;
}

// Works off the screen, whatever display there is.
template <class Work> int offScreen(const Work& work)
{
    ignoreWriteSignals();
    const Toolkit toolkit(Toolkit::Platform::offscreen);
    return work();
}

// What large requests took goes back to the system when they have gone: they get pages of their
// own, the rest of the heap is cut as it empties, and no thread keeps a heap for itself
// (mallopt(3)).
void giveFreedMemoryBack()
{
    constexpr int large = 256 * 1024;
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_MMAP_THRESHOLD, large);
    ::mallopt(M_TRIM_THRESHOLD, large);
}

int runResident(LaunchOptions options)
{
    giveFreedMemoryBack();
    if (!x11::displayIsReachable())
        return complain("QuillMossNotch needs an X11 display (or XWayland), and $DISPLAY names "
                        "none that can be opened.");
    // Before anything is shown or started.
    const SingleInstance instance(SingleInstance::defaultDirectory());
    if (instance.otherRuns())
        return success;
    const Toolkit toolkit(Toolkit::Platform::x11);
    if (!SingleInstance::claimDisplay())
        return success;
    DesktopDependencies dependencies;
    AppDelegate delegate(dependencies.seams(), dependencies.hookFiles(), options);
    delegate.launch();
    const int status = QApplication::exec();
    delegate.willTerminate();
    return status;
}

int launch(const std::vector<std::string>& arguments)
{
    if (const auto preview = PreviewOptions::parse(arguments))
        return offScreen([&] { return renderPreview(*preview); });
    return runResident(LaunchOptions::parse(arguments));
}

int run(WindowMode mode, const std::vector<std::string>& arguments)
{
    switch (mode) {
    case WindowMode::resident:
        return launch(arguments);
    case WindowMode::renderCompletionPreview:
        return offScreen([&] { return renderCompletionPreview(completionPreviewPath(arguments)); });
    case WindowMode::renderQuestionPreview:
        return offScreen(
            [&] { return renderQuestionPreview(QuestionPreviewOptions::parse(arguments)); });
    case WindowMode::uiSelfTest:
        return offScreen([] { return runSelfCheck(std::cout); });
    case WindowMode::nativeDiagnose:
        diagnoseNative(std::cout);
        return success;
    }
    return failure;
}

} // namespace
} // namespace notch

int notchWindowMain(notch::WindowMode mode, int argc, char** argv)
{
    return notch::run(mode, {argv, argv + argc});
}
