// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Help.h"

#include "Entry/Terminal.h"

namespace notch {
namespace {

constexpr int success = 0;

constexpr std::string_view help =
    R"(Usage: QuillMossNotch [OPTION...]

Without an option: the resident application, which keeps the notch on the screen.

  --configure EDITION             show the hook that would be added to QuillMoss
  --configure EDITION --apply     add it; then restart QuillMoss
  --configure EDITION --remove    take it out; then restart QuillMoss
  --configure-completion --apply|--remove
                                  the same for the hooks at the end of a turn
  --native-diagnose               tell whether windows of QuillMoss can be read
  --ui-self-test                  check the notch on this machine, without a display
  --help, -h                      show this
  --version                       show the version

EDITION is quillmoss or quillmossAI. More is in the manual page QuillMossNotch(1).
)";

} // namespace

int printHelp(const Arguments&)
{
    print({help});
    return success;
}

int printVersion(const Arguments&)
{
    print({"QuillMossNotch " NOTCH_VERSION "\n"});
    return success;
}

} // namespace notch
