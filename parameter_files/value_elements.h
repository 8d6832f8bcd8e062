// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/position.h"

#include <zantrel/database/parameter_database.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Which element of a parameter file a path of the database means. An element is told by its way from the
/// root: for each step its tag, its "Name" and how many siblings of both stand before it.
namespace Zantrel {

enum class ParameterFileFormat { Generic, Machine };

/// The element of one value, list or entry, and what of it lies where in the document's bytes.
struct ValueElement {
    bool isFound = false;
    bool isPlain = false; ///< nothing but a text is in it, as it seems
    Xml::Position begin;  ///< of its start tag
    Xml::Position end;    ///< of its end tag
};

/// The ways of the places of these paths, by which documents are looked through.
using ElementWays = std::unordered_map<std::string, std::vector<std::size_t>>;
ElementWays WaysOf(ParameterDatabase const& database, std::vector<std::wstring> const& paths,
                   ParameterFileFormat format);

/// The elements of those ways, `count` of them; none where the document isn't well-formed.
std::vector<ValueElement> FindElements(std::string_view document, ElementWays const& ways, std::size_t count);

} // namespace Zantrel
