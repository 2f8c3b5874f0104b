// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

class Suite;

// The parts of the motion suite.
void checkSilhouette(Suite& suite); // Where the surface is, to the eye and to a click.
void checkMask(Suite& suite); // What is drawn of it.
void checkReveal(Suite& suite); // How the panel moves.
void checkLayout(Suite& suite); // The content in it, what it is measured for, and clicks meanwhile.
void checkSettings(Suite& suite);

} // namespace notch
