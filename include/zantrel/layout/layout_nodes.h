// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zantrel {

struct LayoutNode;

/// The children of a layout node: an ordered list, an index by name, and the nodes themselves, which it owns.
/// Filled through LayoutNode. What is owned is kept apart from what the list shows, so that a node which
/// MoveNodeTo drops from the list or shows twice is still ended exactly once, together with the others.
///
/// Changed by one thread; may be read by several when nobody changes it.
class ZANTREL_EXPORT LayoutNodes {
public:
    LayoutNodes() noexcept;
    /// Copies each shown child with all that is below it, deeply, into a new list. At every level the copy
    /// has no index (a lookup by name finds nothing) and each copied node still names the parent of its
    /// source: the source must outlive the copy, or at least the use of those parents. Throws std::bad_alloc
    /// and leaves nothing behind.
    LayoutNodes(LayoutNodes const& source);
    /// Replaces the children by such a copy; on std::bad_alloc they stay as they were. From a list that
    /// stands below this one, the copies get the parents that they stand under, since those of the source are
    /// gone.
    LayoutNodes& operator=(LayoutNodes const& source);
    ~LayoutNodes();

    /// Ends all children in list order, at any depth of the tree without nested calls.
    void Clear() noexcept;

    std::size_t Size() const noexcept { return m_nodes.size(); }
    /// Throws std::out_of_range, "invalid vector subscript".
    LayoutNode& At(std::size_t index) const;
    /// The last child, or null.
    LayoutNode* Back() const noexcept { return m_nodes.empty() ? nullptr : m_nodes.back(); }

    std::vector<LayoutNode*>::const_iterator begin() const noexcept { return m_nodes.begin(); }
    std::vector<LayoutNode*>::const_iterator end() const noexcept { return m_nodes.end(); }

    /// The latest child that was appended under this name, or null. Never allocates.
    LayoutNode* Find(std::wstring_view name) const noexcept;

    /// What Find gives for the name converted from UTF-8, for a reader that meets the children in list order:
    /// when `hint`, which starts at 0, is the position of the child or of the one before it, nothing is
    /// converted or allocated. Moves `hint` behind the child that was found. Any `hint` gives the same
    /// answer.
    LayoutNode* FindUtf8(std::string_view utf8Name, std::size_t& hint) const;

private:
    friend struct LayoutNode;

    struct NameLess {
        using is_transparent = void;
        bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
    };
    struct Found {
        LayoutNode* node = nullptr; ///< null after the last child of that name has left
        std::size_t position = 0;   ///< where it was appended, or Unknown
        std::size_t bearers = 0;    ///< the owned children whose latest name this is
    };
    static constexpr std::size_t Unknown = static_cast<std::size_t>(-1);
    using Index = std::map<std::wstring, Found, NameLess>;
    enum class Parents { AsInSource, OfTheCopy };

    /// The children of `holder`.
    explicit LayoutNodes(LayoutNode* holder) noexcept;

    void Append(LayoutNode* child);
    void Move(LayoutNode const* child, std::size_t index);
    void CopyFrom(LayoutNodes const& source, Parents parents);
    void Take(LayoutNodes& other) noexcept;
    void Own(LayoutNode& node) noexcept;
    void Disown(LayoutNode& node) noexcept;
    void TakeOffIndex(LayoutNode& node) noexcept;
    void LinkInListOrder() noexcept;
    void Release(LayoutNode& node) noexcept;
    bool StandsBelow(LayoutNodes const& top) const noexcept;

    std::vector<LayoutNode*> m_nodes;
    Index m_index;
    LayoutNode* m_holder = nullptr;     ///< whose children these are; null for a list that stands alone
    LayoutNode* m_firstOwned = nullptr; ///< every owned node once, linked both ways by the nodes themselves
    LayoutNode* m_lastOwned = nullptr;
    LayoutNodes* m_heir = nullptr; ///< where the nodes go at the end of this list instead of being ended here
};

} // namespace Zantrel
