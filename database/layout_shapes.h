// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "database/default_values.h"
#include "store/bag_access.h"
#include "text/same_text.h"

#include <zantrel/layout/parameter_layout.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel {

class LayoutShapes;

/// The shape of the bags that hold what stands below one node of a layout: its children's bags, of a profile
/// also the flag that every read gives it. Beside it the children in the layout's order, with what formatting
/// took from the layout, so that it can be told whether the layout has changed since.
class NodeShape : public BagShape {
public:
    struct Child {
        LayoutNode const* node;
        std::size_t slot = 0;
        NodeShape const* body = nullptr; ///< null where nothing stands below, or values only
        eTypeLayoutNode type;
        bool isList;
        bool isProfileList;
        std::wstring_view name; ///< as it was then, in m_texts like the default text
        std::wstring_view defaultText;
        bool isFirst = false; ///< of its name: a look-up in the bag finds this child's
        std::string
            utf8Name; ///< empty where a look-up of this name, in layout or bag, finds another child or none

        /// Whether a look-up by the name of `live` finds the bag that stands in this child's slot.
        bool IsFoundAs(LayoutNode const& live) const {
            return node == &live && isFirst && name == live.m_name;
        }
    };

    /// `number` tells the shapes of a layout apart.
    NodeShape(LayoutShapes const& all, std::size_t number, LayoutNode const& node,
              DefaultValues const& defaults);

    std::size_t Number() const noexcept { return m_number; }
    LayoutNode const& Node() const noexcept { return m_node; }
    LayoutShapes const& All() const noexcept { return m_all; }
    std::vector<Child> const& Children() const noexcept { return m_children; }
    /// The positions of those whose bags are filled one by one, since their content is no value.
    std::vector<std::size_t> const& WithContent() const noexcept { return m_withContent; }
    /// The child whose bag has this name, which is `child` itself unless several have one name; null: none.
    Child const* FindChild(LayoutNode const& child) const noexcept {
        std::size_t const slot = FindBorrowed(child.m_name);
        return slot != Size() && At(slot).flagBit == 0 ? &m_children[m_childOfSlot[slot]] : nullptr;
    }

    /// The child that a look-up by name finds in `node`, and its bag in the bag of this shape. Null where
    /// that isn't settled here: `node` is another one, its list has changed, or there is no such child.
    Child const* FindByName(LayoutNode const& node, std::wstring_view name) const noexcept {
        bool const isUnchanged = &node == &m_node && node.m_children.m_changes == m_changes;
        std::size_t const slot = isUnchanged ? FindFixed(name) : Size();
        bool const isChild = slot != Size() && At(slot).flagBit == 0;
        Child const* const child = isChild ? &m_children[m_childOfSlot[slot]] : nullptr;
        // Found by the name that the child has now; so that is also the one that it had.
        bool const isAsBefore =
            child != nullptr && !child->utf8Name.empty() && Text::IsSame(child->name, name);
        return isAsBefore && child->isFirst ? child : nullptr;
    }

    /// Whether `node` is the one that this was made from, and its children are still as they were then.
    bool Fits(LayoutNode const& node) const;

private:
    friend class LayoutShapes;

    LayoutShapes const& m_all;
    std::size_t m_number;
    LayoutNode const& m_node;
    std::uint32_t m_changes; ///< of its list, when this was made
    std::wstring m_texts;    ///< of all children one behind the other, as they are compared with the layout
    std::vector<Child> m_children;
    std::vector<std::size_t> m_withContent;
    std::vector<std::size_t> m_childOfSlot;
};

/// The shapes of all that a database on a layout holds. Made by the layout's first database, then kept by the
/// layout and shared by all databases for which it still fits, on whatever threads: it never changes. A
/// layout that was changed gets new ones with its next database, while older databases keep theirs.
class LayoutShapes {
public:
    /// For `layout` as it is now. Throws std::bad_alloc.
    static std::shared_ptr<LayoutShapes const> Of(ParameterLayout const& layout);

    LayoutShapes(LayoutShapes const&) = delete;
    LayoutShapes& operator=(LayoutShapes const&) = delete;

    /// Below the profile editor; null where nothing stands there.
    NodeShape const* Top() const noexcept { return m_shapes.empty() ? nullptr : m_shapes.front().get(); }
    /// The global locale when the default values were read.
    std::locale const& Locale() const noexcept { return m_locale; }

private:
    explicit LayoutShapes(LayoutNode const* top);
    bool Fit(LayoutNode const* top) const;

    std::locale m_locale;
    LayoutNode const* m_top;
    std::vector<std::unique_ptr<NodeShape>> m_shapes; ///< each behind that of the node above
};

/// The shape by which a bag of a database was formatted, or null.
inline NodeShape const* NodeShapeOf(PersistentProperties const& bag) {
    return static_cast<NodeShape const*>(BagAccess::ShapeOf(bag));
}

/// Which shapes fit the layout as it is: for one operation, while which the layout doesn't change. Each shape
/// is looked at when it is asked for, and again only where too many others were asked for in between.
class FittingShapes {
public:
    FittingShapes() = default;
    /// `shapes` are known to fit as a whole. They must live as long.
    explicit FittingShapes(LayoutShapes const& shapes) : m_whole(&shapes) {}

    bool Has(NodeShape const& shape, LayoutNode const& node);

private:
    LayoutShapes const* m_whole = nullptr;
    std::locale const m_locale;
    std::array<NodeShape const*, 64> m_known{}; ///< by number, each the last that fitted
};

} // namespace Zantrel
