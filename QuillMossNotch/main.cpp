// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Entry.h"

int main(int argc, char** argv)
{
    return notch::runProgram({argc, argv});
}
