// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace Zantrel {

struct LayoutNode;

/// A flat index of the leaves below a cursor, sorted by a path that also leads through items and profiles. A
/// snapshot: leaves that are added later are not in it, and its pointers go stale with the bags they name.
///
/// A path is the names of the steps from below the cursor, joined by "_": a child's name; for an item the
/// list's entry name (m_nodeName) and "[index]", from 0; for a profile the entry name and "[name]"; for the
/// default profile the entry name and "::Default::". An item of the list "Ranges" has leaves such as
/// "Ranges_ListItem[0]_Begin". Nothing takes a path apart again, so names may hold "_".
///
/// A value like any other: copies are deep and name the same bags. A list that was moved from is empty.
struct ZANTREL_EXPORT ContentList {
    struct ZANTREL_EXPORT Node {
        /// What the value was when the list was made, by the type of the layout's node. Nothing for Int,
        /// FileAttachment and Group: read these through m_pProperties.
        union Value {
            double number;            ///< Double, Distance
            bool flag;                ///< Bool
            std::wstring const* text; ///< all texts: follows later writes, and dies with the bag
        };

        std::wstring m_path;
        LayoutNode const* m_pLayout = nullptr;         ///< borrowed from the layout
        PersistentProperties* m_pProperties = nullptr; ///< borrowed; holds the value as it is now
        Value m_value{};

        /// By path alone, by UTF-16 code unit, a prefix first.
        bool operator<(Node const& other) const { return *this < std::wstring_view(other.m_path); }
        bool operator<(std::wstring_view path) const noexcept;
        friend ZANTREL_EXPORT bool operator<(std::wstring_view path, Node const& node) noexcept;
    };

    /// A path can be looked up as it stands: `list.m_nodes.find(std::wstring_view(L"Laser_Power"))`.
    std::set<Node, std::less<>> m_nodes;

    ContentList();
    ContentList(ContentList const& source);
    ContentList(ContentList&& source) noexcept;
    ContentList& operator=(ContentList const& source);
    ContentList& operator=(ContentList&& source) noexcept;
    ~ContentList();
};

} // namespace Zantrel
