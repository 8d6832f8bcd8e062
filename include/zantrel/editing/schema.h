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
/// with a wrong number, a value out of range, a misspelt element or a choice that isn't one is not. What may
/// be missing is what IsValidParameterFile doesn't miss; the children of a group come in any order.
///
/// Where the schema language has no words the schema takes more than the layout does, and says so: siblings
/// of one name, names with a colon, places that no cursor reaches, limits that nothing meets, some patterns.
/// An empty text is always taken.
///
/// False when the file can't be written, or when the layout's root has no name that an element can have;
/// `report` says why. The file then is as it was. Takes time and memory in the size of the layout.
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
