// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_nodes.h>

#include <zantrel/layout/layout_node.h>

#include "layout/child_list.h"

#include <stdexcept>
#include <utility>
#include <vector>

// The handle that a node has on its children. The list itself is made with the first child, so that a leaf,
// as most nodes are, costs a few words; what a list keeps true stands in child_list.h.

namespace Zantrel {

LayoutNodes::LayoutNodes() noexcept = default;

LayoutNodes::LayoutNodes(LayoutNode* holder) noexcept : m_holder(holder) {}

LayoutNodes::LayoutNodes(LayoutNodes const& source) : LayoutNodes() { CopyFrom(source, Parents::AsInSource); }

// The copy is whole before anything ends, as the source may stand among what ends. Then its nodes may name no
// parent of the source any more, which is the one case where the copies get parents of their own.
LayoutNodes& LayoutNodes::operator=(LayoutNodes const& source) {
    if (this != &source) {
        bool const sourceEnds =
            m_holder != nullptr && source.m_holder != nullptr && source.m_holder->StandsBelow(*m_holder);
        LayoutNodes copy(m_holder);
        copy.CopyFrom(source, sourceEnds ? Parents::OfTheCopy : Parents::AsInSource);
        Clear();
        m_list = std::move(copy.m_list);
    }
    return *this;
}

// An heir is there when a list above ends this node: it takes the children, so that ending doesn't nest.
LayoutNodes::~LayoutNodes() {
    if (m_heir == nullptr) {
        Clear();
    } else if (m_list != nullptr) {
        ChildList::Pile(std::move(m_list), *m_heir);
    }
}

void LayoutNodes::Clear() noexcept {
    ++m_changes;
    while (m_list != nullptr) { // again, if a child appended something when it ended
        ChildList::End(std::move(m_list));
    }
}

std::size_t LayoutNodes::Size() const noexcept { return m_list != nullptr ? m_list->Size() : 0; }

LayoutNode& LayoutNodes::At(std::size_t index) const {
    if (m_list == nullptr || index >= m_list->Size()) {
        throw std::out_of_range("invalid vector subscript");
    }
    return *m_list->Shown(index);
}

LayoutNode* LayoutNodes::Back() const noexcept { return Size() != 0 ? Shown(Size() - 1) : nullptr; }

LayoutNode* const& LayoutNodes::Shown(std::size_t position) const noexcept { return m_list->Shown(position); }

LayoutNode* const* LayoutNodes::Row() const noexcept { return m_list != nullptr ? m_list->Row() : nullptr; }

LayoutNode* LayoutNodes::Find(std::wstring_view name) const noexcept {
    return m_list != nullptr ? m_list->Find(name) : nullptr;
}

LayoutNode* LayoutNodes::FindUtf8(std::string_view utf8Name, std::size_t& hint) const {
    return m_list != nullptr ? m_list->FindUtf8(utf8Name, hint) : nullptr;
}

ChildList& LayoutNodes::List() {
    if (m_list == nullptr) {
        m_list = std::make_unique<ChildList>(m_holder);
        m_wasFilled = true;
    }
    return *m_list;
}

void LayoutNodes::Append(LayoutNode* child) {
    std::unique_ptr<LayoutNode> endedOnFailure(child->m_owner == nullptr ? child : nullptr);
    List().Append(*child, true);
    static_cast<void>(endedOnFailure.release());
}

void LayoutNodes::Move(LayoutNode const* child, std::size_t index) {
    if (child != nullptr && m_list != nullptr && child->m_owner == m_list.get()) {
        m_list->Move(const_cast<LayoutNode&>(*child), index);
        ++m_changes;
    }
}

/// A copy has the nodes that the list shows, so a child that is shown twice becomes two and one that no
/// position shows is left out; what it doesn't have is the index and, but for Parents::OfTheCopy, parents of
/// its own. Readers and writers of files count on a lookup by name that finds nothing in a copy, and hosts on
/// the parents of the source. List by list with a note of what is still to be copied, as a tree may be deeper
/// than the stack; each copy belongs to its list before the next is made, so a failure ends all.
void LayoutNodes::CopyFrom(LayoutNodes const& source, Parents parents) {
    struct Level {
        LayoutNodes const* from;
        LayoutNodes* to;
    };
    std::vector<Level> open{{&source, this}};
    while (!open.empty()) {
        auto const [from, to] = open.back();
        open.pop_back();
        for (LayoutNode const* const node : *from) {
            std::unique_ptr<LayoutNode> copy(new LayoutNode(*node, LayoutNode::WithoutChildren()));
            to->List().Append(*copy, false);
            LayoutNode* const owned = copy.release();
            if (parents == Parents::OfTheCopy) {
                owned->m_parent = to->m_holder;
            }
            if (node->Size() != 0) {
                open.push_back({&node->m_children, &owned->m_children});
            }
        }
    }
}

} // namespace Zantrel
