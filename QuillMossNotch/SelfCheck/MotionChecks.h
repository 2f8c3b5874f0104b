// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

class Suite;

// The parts of the motion suite.
void checkSilhouette(Suite& suite); // Where the surface is, to the eye and to a click.
void checkReveal(Suite& suite); // How the panel moves.

} // namespace notch
