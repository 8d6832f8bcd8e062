// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <cstddef>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

/// What stands where in a database, and how two of them differ.
namespace Paramtool {

/// A group, a leaf, a container, or one of its profiles and items.
struct Place {
    Zantrel::ParameterNode node;
    Zantrel::ParameterNode defaults; ///< what the layout gives this place, or a new entry of its container
    std::wstring path;               ///< of a leaf the one that ParameterNode::Query takes
    std::wstring title;              ///< the last step alone
    std::size_t depth = 0;
    bool isEntry = false; ///< a profile or item
    bool isAdded = false; ///< an entry that a new database doesn't have

    /// Value and flags, as a line says them behind the path: " = 0.03 mm (read-only)".
    std::wstring Text() const { return TextOf(node); }
    static std::wstring TextOf(Zantrel::ParameterNode const& node);
};

/// Visits every place with content below the profile editor, in the order of the layout.
void ForEachPlace(Zantrel::ParameterDatabase& database, std::function<void(Place const&)> const& visit);

/// That a text stands at a path.
struct Fact {
    std::wstring path;
    std::wstring text;

    bool operator<(Fact const& other) const {
        return std::tie(path, text) < std::tie(other.path, other.text);
    }
};

/// All values, flags and entries: two databases with equal facts hold the same.
std::vector<Fact> FactsOf(Zantrel::ParameterDatabase& database);

struct Change {
    Fact fact;
    bool isAdded = false; ///< only the later has it; otherwise only the earlier
    std::wstring Line() const { return (isAdded ? L"+ " : L"- ") + fact.path + fact.text; }
};

/// By path, what is gone in front of what has come.
std::vector<Change> Differences(std::vector<Fact> earlier, std::vector<Fact> later);

} // namespace Paramtool
