// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/write_report.h>

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// The texts of values where they stand in a parameter file, to point at them and to change them in place.
/// Any thread, as long as nobody changes the layout.
namespace Zantrel {

/// What one value is to be.
struct ValueText {
    std::wstring path; ///< of a leaf, as ContentList has it: "Materials_Profile[Steel]_Power"
    std::wstring text; ///< as the file is to have it, not escaped: "0.06", "true"
};

/// Writes the file at `path` to `target`, which may be the same, with other texts of these values: all other
/// bytes stay, comments, order, line ends and passed-over elements among them. Whole or not at all: on
/// failure what stood at `target` is untouched.
///
/// The result is read back before it is written: it holds each text as the value, and all else as it was.
///
/// False when a value can't be changed so, and `report`, where given, says why: its element isn't in the
/// file, holds more than a text (comments, CDATA, an attachment) or stands there several times; the text is
/// no value of the type, or XML can't carry it; the file is in UTF-16, or can't be read or written. Then the
/// way is ReadFile, a cursor, and WriteFile. Nothing is held against limits or options. Of several texts for
/// one path the last counts. Takes time and memory in the size of file and layout. Throws std::bad_alloc.
ZANTREL_EXPORT bool EditValueTexts(ParameterLayout const& layout, std::wstring const& path,
                                   std::vector<ValueText> const& values, std::wstring const& target,
                                   WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool EditValueTexts(ParameterLayout const& layout, Path const& path, std::vector<ValueText> const& values,
                    Path const& target, WriteReport* report = nullptr) {
    return EditValueTexts(layout, WidePath(path), values, WidePath(target), report);
}

/// Where an element begins, as ReadReport counts: from 1, columns in characters. 0 where there is none.
struct ValuePlace {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// The places of the elements of values, lists, profiles and items in a file, one for each path; empty places
/// for a file that can't be read. Of an element that stands there several times the first.
ZANTREL_EXPORT std::vector<ValuePlace> FindValuePlaces(ParameterLayout const& layout,
                                                       std::wstring const& path,
                                                       std::vector<std::wstring> const& paths);

namespace KlvrProperties {

// The same of machine parameters files.
ZANTREL_EXPORT bool EditValueTexts(ParameterLayout const& layout, std::wstring const& path,
                                   std::vector<ValueText> const& values, std::wstring const& target,
                                   WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool EditValueTexts(ParameterLayout const& layout, Path const& path, std::vector<ValueText> const& values,
                    Path const& target, WriteReport* report = nullptr) {
    return KlvrProperties::EditValueTexts(layout, WidePath(path), values, WidePath(target), report);
}
ZANTREL_EXPORT std::vector<ValuePlace> FindValuePlaces(ParameterLayout const& layout,
                                                       std::wstring const& path,
                                                       std::vector<std::wstring> const& paths);

} // namespace KlvrProperties
} // namespace Zantrel
