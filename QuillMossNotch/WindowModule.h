// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace notch {

// The modes of the program that need what the window module links: the window system, the
// accessibility interface, the toolkit.
enum class WindowMode : std::uint8_t {
    resident,
    renderCompletionPreview, // The argument after its flag, which is there, is the picture's path.
    renderQuestionPreview, // The same.
    uiSelfTest,
    nativeDiagnose,
};

// The module's file name; the entry looks for it beside itself, and where it is installed.
inline constexpr const char* windowModuleFileName = "NotchWindow.so";
// The name under which the entry finds the function below.
inline constexpr const char* windowModuleEntryName = "notchWindowMain";

using WindowModuleEntry = int(WindowMode mode, int argc, char** argv);

} // namespace notch

// The one way into the window module. The argument list is the process's own, untouched; the result
// is the process's exit status. Called once, on the main thread, before any other thread exists.
extern "C" __attribute__((visibility("default"))) int notchWindowMain(
    notch::WindowMode mode, int argc, char** argv);
