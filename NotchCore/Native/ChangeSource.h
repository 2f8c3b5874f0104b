// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// Tells a thread that sleeps when to look again. The sleeper's thread only.
class ChangeSource {
public:
    virtual ~ChangeSource() = default;
    // Readable when there may be a change that takeChanges() has not read yet; -1 where nothing
    // tells of changes.
    virtual int changesDescriptor() = 0;
    // There may have been a change since the last call.
    virtual bool takeChanges() = 0;
};

} // namespace notch
