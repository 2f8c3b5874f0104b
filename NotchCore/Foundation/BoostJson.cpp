// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The parser library's own sources, compiled here once: its packaged library would be a further
// shared object for every hook process to load.
#include <boost/json/src.hpp>
