// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace LayoutFromFile {

/// The languages that any key is translated into, "en-US" first.
std::vector<std::wstring> LanguagesOf(Zantrel::ResourceDictionary const& dictionary);

/// Prints the layout as an indented tree in UTF-8, one line a node: its display name in each of the languages
/// side by side, then its type and its default.
void ShowOutline(Zantrel::ParameterLayout const& layout, std::vector<std::wstring> const& languages,
                 std::ostream& out);

} // namespace LayoutFromFile
