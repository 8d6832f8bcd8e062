// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/io/path.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/write_report.h>

#include <iosfwd>
#include <string>

namespace Zantrel::Editing {

/// Writes an XML schema (XSD 1.0) of the layout's own generic parameter files, by which an editor completes
/// and checks them: element names, types, limits, choices, patterns, and unit and description as
/// documentation. Whatever the library writes for a database whose values the layout allows is valid; a file
/// with a wrong number, a value out of range, a misspelt element or a choice that isn't one is not. Patterns
/// that the schema language can't say are left out and told in a comment.
///
/// False when the file can't be written; `report` says why. The file then is as it was.
ZANTREL_EDITING_EXPORT bool WriteSchema(ParameterLayout const& layout, std::wstring const& path,
                                        WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteSchema(ParameterLayout const& layout, Path const& path, WriteReport* report = nullptr) {
    return WriteSchema(layout, WidePath(path), report);
}
/// The same to a stream.
ZANTREL_EDITING_EXPORT bool WriteSchema(ParameterLayout const& layout, std::basic_ostream<char>& out,
                                        WriteReport* report = nullptr);

} // namespace Zantrel::Editing
