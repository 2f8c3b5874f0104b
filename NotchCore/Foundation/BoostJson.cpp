// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What the parser library's basic_parser needs of the library's own sources, compiled here once.
// Its packaged library would be a further shared object for every hook process to load, and the
// rest of its sources draws in the standard streams, whose locales every hook process would
// initialise.
#define BOOST_JSON_SOURCE
#include <boost/json/basic_parser.hpp>
#include <boost/json/detail/impl/default_resource.ipp>
#include <boost/json/detail/impl/stack.ipp>
#include <boost/json/impl/error.ipp>
