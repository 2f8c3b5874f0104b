// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// Gives back the pages of font files. The toolkit maps those files, and a glyph that is drawn once
// keeps up to 64 kB of its file resident for good: 9 MB after one request in Chinese. Drawn glyphs
// are kept elsewhere; a new one maps what it needs again, within microseconds. Main thread.
void releaseFontPages();

} // namespace notch
