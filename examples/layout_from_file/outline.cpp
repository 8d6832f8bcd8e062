// SPDX-License-Identifier: Apache-2.0
//
// Showing a layout: its nodes as an indented tree, with the display names in all languages side by side.
//
// To look at: LayoutNode::At and Size, which walk a tree of nodes; the names that a container has as a whole
// and for one entry; ResourceDictionary::GetTranslation, and that a dictionary is a bag of bags, which a loop
// can list.

#include "outline.h"

#include <algorithm>
#include <ostream>
#include <set>

namespace LayoutFromFile {

namespace {

using namespace Zantrel;

/// A line of the outline: the name in each language, then the facts.
using Row = std::vector<std::wstring>;

/// What a host looks up in the dictionary. A container has a name as a whole beside that of its entries.
std::wstring const& DisplayKey(LayoutNode const& node) {
    return node.m_isList || node.m_isProfileList ? node.m_containerDisplayName : node.m_displayName;
}

/// The key itself where it isn't translated: the dictionary has no language to fall back to.
std::wstring Translate(ParameterLayout const& layout, std::wstring const& key, std::wstring const& language) {
    ResourceDictionary const* dictionary = layout.GetResourceDictionary();
    if (key.empty() || dictionary == nullptr) {
        return key;
    }
    std::wstring const* text = dictionary->GetTranslation(key, language);
    return text != nullptr ? *text : key;
}

/// "Distance = 0.03", "profiles", "list of Double = 1"; nothing for a group, which its indented children
/// show.
std::wstring FactsOf(LayoutNode const& node) {
    static constexpr wchar_t const* typeNames[] = {L"Group",          L"Int",
                                                   L"Double",         L"Distance",
                                                   L"Bool",           L"String",
                                                   L"Options",        L"OptionsFromProfiles",
                                                   L"FileAbsolute",   L"FileAttachment",
                                                   L"StandardOptions"};
    std::wstring facts = node.m_isCategoryList  ? L"categories"
                         : node.m_isProfileList ? L"profiles"
                         : node.m_isList        ? L"list"
                                                : L"";
    if (node.m_type == Group) {
        return facts;
    }
    facts += (facts.empty() ? L"" : L" of ") + std::wstring(typeNames[node.m_type]);
    if (node.m_type == OptionsFromProfiles) {
        facts += L' ' + node.m_profileName;
    }
    return node.m_defaultValue.empty() ? facts : facts + L" = " + node.m_defaultValue;
}

void AddRowsBelow(ParameterLayout const& layout, LayoutNode const& parent,
                  std::vector<std::wstring> const& languages, std::size_t depth, std::vector<Row>& rows) {
    for (std::size_t i = 0; i < parent.Size(); ++i) {
        LayoutNode const& node = parent.At(i);
        Row row;
        for (std::wstring const& language : languages) {
            row.push_back(Translate(layout, DisplayKey(node), language));
        }
        if (row.front().empty()) {
            row.front() = node.m_name;
        }
        row.front().insert(0, 2 * depth, L' ');
        row.push_back(FactsOf(node));
        rows.push_back(std::move(row));
        AddRowsBelow(layout, node, languages, depth + 1, rows);
    }
}

/// How many columns of a terminal the text takes: from the radicals on, East Asian characters take two.
std::size_t WidthOf(std::wstring const& text) {
    auto const isWide = [](wchar_t c) { return c >= L'\u2E80'; };
    return text.size() + static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isWide));
}

void Print(std::vector<Row> const& rows, std::ostream& out) {
    std::vector<std::size_t> widths(rows.front().size());
    for (Row const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], WidthOf(row[i]));
        }
    }
    for (Row const& row : rows) {
        std::wstring line;
        std::size_t missing = 0; // blanks up to the next column, added only when something stands there
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (!row[i].empty()) {
                line += std::wstring(missing, L' ') + row[i];
                missing = 0;
            }
            missing += widths[i] - WidthOf(row[i]) + 2;
        }
        out << StringConversion::NativeToUtf8(line) << '\n';
    }
}

} // namespace

std::vector<std::wstring> LanguagesOf(ResourceDictionary const& dictionary) {
    std::set<std::wstring> found;
    for (auto const& [key, property] : dictionary) {
        if (auto const* texts = PropertyCast<PersistentProperties>(property)) {
            for (auto const& [language, text] : texts->m_value) {
                found.emplace(language);
            }
        }
    }
    std::vector<std::wstring> languages(found.begin(), found.end());
    std::stable_partition(languages.begin(), languages.end(),
                          [](std::wstring const& language) { return language == L"en-US"; });
    return languages;
}

void ShowOutline(ParameterLayout const& layout, std::vector<std::wstring> const& languages,
                 std::ostream& out) {
    std::vector<std::wstring> columns = languages;
    if (columns.empty()) {
        columns.emplace_back(L"not translated");
    }
    std::vector<Row> rows{columns};
    rows.front().emplace_back(L"type = default");
    AddRowsBelow(layout, layout, columns, 0, rows);
    Print(rows, out);
}

} // namespace LayoutFromFile
