// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

/// What stands where in a database, and how two of them differ.
namespace Paramtool {

/// Every place with content below the profile editor, in the order of the layout, beside what the layout
/// gives it:
///
///     for (Places places(database); places.Next();)
class Places {
public:
    explicit Places(Zantrel::ParameterDatabase const& database);

    bool Next();

    /// A path as ParameterNode::Query takes it; the depth below the editor's children.
    Zantrel::ParameterView const& Node() const { return m_walk.Node(); }
    std::wstring Path() const { return std::wstring(m_walk.Path()); }
    std::size_t Depth() const { return m_walk.Depth() - 1; }
    /// The last step alone.
    std::wstring Title() const;

    /// What the layout gives this place, or a new entry of its container.
    Zantrel::ParameterView const& Defaults() const { return m_defaults.back(); }
    /// A profile or item.
    bool IsEntry() const;
    /// An entry that a new database doesn't have.
    bool IsAdded() const;

    /// Value and flags, as a line says them behind the path: " = 0.03 mm (read-only)".
    static std::wstring TextOf(Zantrel::ParameterView const& node);
    std::wstring Text() const { return TextOf(Node()); }

private:
    Zantrel::ParameterView DefaultsBelow(Zantrel::ParameterView const& above) const;

    Zantrel::ParameterDatabase m_formatted;
    Zantrel::Walk<Zantrel::ParameterView> m_walk;
    std::vector<Zantrel::ParameterView> m_defaults; ///< of this place and those above
};

/// That a text stands at a path.
struct Fact {
    std::wstring path;
    std::wstring text;

    bool operator<(Fact const& other) const {
        return std::tie(path, text) < std::tie(other.path, other.text);
    }
};

/// All values, flags and entries: two databases with equal facts hold the same.
std::vector<Fact> FactsOf(Zantrel::ParameterDatabase const& database);

struct Change {
    Fact fact;
    bool isAdded = false; ///< only the later has it; otherwise only the earlier
    std::wstring Line() const { return (isAdded ? L"+ " : L"- ") + fact.path + fact.text; }
};

/// By path, what is gone in front of what has come.
std::vector<Change> Differences(std::vector<Fact> earlier, std::vector<Fact> later);

} // namespace Paramtool
