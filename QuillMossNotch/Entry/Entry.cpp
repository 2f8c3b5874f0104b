// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Entry.h"

#include "Bridge/HookClient.h"
#include "Entry/Configure.h"
#include "Entry/ConfigureCompletion.h"
#include "Entry/Help.h"
#include "Entry/Terminal.h"
#include "Entry/WindowModuleLoader.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "TurnEnd/CompletionHookClient.h"

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <unistd.h>

namespace notch {
namespace {

constexpr int success = 0;

int printTransportIdentity(const Arguments&)
{
    print({"production\n"});
    return success;
}

// A hook's failure shows only as missing output, never as a status: whatever happens, the host's
// own flow goes on.
template <class Work> int runSilently(const Work& work)
{
    // Where memory is so short that an exception cannot even be thrown.
    std::set_terminate([] { ::_exit(success); });
    try {
        work();
    } catch (const std::bad_alloc&) {
    }
    return success;
}

int runHook(const Arguments& arguments)
{
    return runSilently([&] {
        HookClient().run(
            arguments.after("--source").value_or(rawValue(QuillMossProfile::quillmoss)));
    });
}

// Only the very list that the installer writes: any other is not this system's hook.
bool isOwnCompletionHook(const Arguments& arguments)
{
    return arguments.are({HookInstaller::completionHookFlag, HookInstaller::sourceFlag,
        rawValue(QuillMossProfile::quillmoss), HookInstaller::ownerFlag,
        HookInstaller::completionOwnerMarker});
}

int runCompletionHook(const Arguments& arguments)
{
    return runSilently([&] {
        if (isOwnCompletionHook(arguments))
            CompletionHookClient().run();
    });
}

int renderCompletionPreview(const Arguments& arguments)
{
    if (!arguments.after("--render-completion-preview"))
        return complain({"Usage: --render-completion-preview <new.png>\n"});
    return runWindowModule(WindowMode::renderCompletionPreview, arguments);
}

int renderQuestionPreview(const Arguments& arguments)
{
    if (!arguments.after("--render-question-preview"))
        return complain({"Usage: QuillMossNotch --render-question-preview <new.png> "
                         "[--question-long] [--question-failure]\n"});
    return runWindowModule(WindowMode::renderQuestionPreview, arguments);
}

template <WindowMode mode> int runInWindowModule(const Arguments& arguments)
{
    return runWindowModule(mode, arguments);
}

using Condition = bool(const Arguments&, std::string_view flag);

bool contains(const Arguments& arguments, std::string_view flag)
{
    return arguments.contains(flag);
}

bool isOnlyArgument(const Arguments& arguments, std::string_view flag)
{
    return arguments.are({flag});
}

struct Row {
    std::string_view flag;
    Condition* matches;
    int (*run)(const Arguments&);
};

// The first row that matches owns the process, so their order matters.
constexpr std::array rows{
    Row{"--test-transport-identity", isOnlyArgument, printTransportIdentity},
    Row{"--completion-hook", contains, runCompletionHook},
    Row{"--configure-completion", contains, configureCompletion},
    Row{"--render-completion-preview", contains, renderCompletionPreview},
    Row{"--render-question-preview", contains, renderQuestionPreview},
    Row{"--ui-self-test", contains, runInWindowModule<WindowMode::uiSelfTest>},
    Row{"--native-diagnose", contains, runInWindowModule<WindowMode::nativeDiagnose>},
    Row{"--configure", contains, configure},
    Row{"--hook", contains, runHook},
    Row{"--help", isOnlyArgument, printHelp},
    Row{"-h", isOnlyArgument, printHelp},
    Row{"--version", isOnlyArgument, printVersion},
};

} // namespace

int runProgram(const Arguments& arguments)
{
    const auto row = std::ranges::find_if(
        rows, [&](const Row& each) { return each.matches(arguments, each.flag); });
    return row == rows.end() ? runWindowModule(WindowMode::resident, arguments)
                             : row->run(arguments);
}

} // namespace notch
