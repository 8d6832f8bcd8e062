// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_nodes.h>

#include <zantrel/layout/layout_node.h>
#include <zantrel/text/string_conversion.h>

#include "text/unicode.h"
#include "text/utf16_order.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace Zantrel {

bool LayoutNodes::NameLess::operator()(std::wstring_view left, std::wstring_view right) const noexcept {
    return Text::Compare(left, right) < 0;
}

LayoutNodes::LayoutNodes() noexcept = default;

LayoutNodes::LayoutNodes(LayoutNode* holder) noexcept : m_holder(holder) {}

LayoutNodes::LayoutNodes(LayoutNodes const& source) : LayoutNodes() { CopyFrom(source, Parents::AsInSource); }

LayoutNodes& LayoutNodes::operator=(LayoutNodes const& source) {
    if (this != &source) {
        LayoutNodes copy(m_holder);
        copy.CopyFrom(source, source.StandsBelow(*this) ? Parents::OfTheCopy : Parents::AsInSource);
        Clear();
        Take(copy);
    }
    return *this;
}

LayoutNodes::~LayoutNodes() {
    if (m_heir == nullptr) {
        Clear();
    } else if (m_firstOwned != nullptr) {
        LinkInListOrder();
        for (LayoutNode* node = m_firstOwned; node != nullptr; node = node->m_nextOwned) {
            node->m_parent = nullptr;
            node->m_owner = m_heir;
        }
        m_lastOwned->m_nextOwned = m_heir->m_firstOwned;
        (m_heir->m_firstOwned != nullptr ? m_heir->m_firstOwned->m_previousOwned : m_heir->m_lastOwned) =
            m_lastOwned;
        m_heir->m_firstOwned = m_firstOwned;
    }
}

void LayoutNodes::Clear() noexcept {
    LinkInListOrder();
    // A node leaves what it owns to this list, in its own place, so that a tree of any depth needs no depth
    // of stack.
    while (LayoutNode* const node = m_firstOwned) {
        m_nodes.clear();
        m_index.clear();
        Disown(*node);
        node->m_children.m_heir = this;
        delete node;
    }
}

LayoutNode& LayoutNodes::At(std::size_t index) const {
    if (index >= m_nodes.size()) {
        throw std::out_of_range("invalid vector subscript");
    }
    return *m_nodes[index];
}

LayoutNode* LayoutNodes::Find(std::wstring_view name) const noexcept {
    auto const entry = m_index.find(name);
    return entry != m_index.end() ? entry->second.node : nullptr;
}

LayoutNode* LayoutNodes::FindUtf8(std::string_view utf8Name, std::size_t& hint) const {
    if (m_index.empty()) {
        return nullptr;
    }
    // The name that counts is that of the index, which a child's own name may no longer be; and the child
    // that counts is that of the index too, which may be a later one of the same name.
    std::size_t position = hint;
    for (int attempt = 0; attempt < 2 && !m_nodes.empty(); ++attempt) {
        position = position < m_nodes.size() ? position : 0;
        Index::value_type const* const entry = m_nodes[position]->m_indexed;
        ++position;
        if (entry != nullptr && Text::EqualsUtf8(entry->first, utf8Name)) {
            hint = position;
            return entry->second.node;
        }
    }
    auto const entry = m_index.find(StringConversion::Utf8ToNative(utf8Name));
    if (entry == m_index.end()) {
        return nullptr;
    }
    hint = entry->second.position + 1;
    return entry->second.node;
}

void LayoutNodes::Append(LayoutNode* child) {
    std::unique_ptr<LayoutNode> endedOnFailure(child->m_owner == nullptr ? child : nullptr);
    if (m_nodes.size() == m_nodes.capacity()) {
        m_nodes.reserve(2 * m_nodes.size() + 1);
    }
    auto const entry = m_index.try_emplace(child->m_name).first;

    // From here on nothing can fail.
    static_cast<void>(endedOnFailure.release());
    if (child->m_owner != this) {
        if (child->m_owner != nullptr) {
            child->m_owner->Release(*child);
        }
        Own(*child);
    }
    if (child->m_indexed != &*entry) {
        if (child->m_indexed != nullptr) {
            --child->m_indexed->second.bearers;
            child->m_hasEarlierNames = true;
        }
        ++entry->second.bearers;
        child->m_indexed = &*entry;
    }
    entry->second.node = child;
    entry->second.position = m_nodes.size();
    m_nodes.push_back(child);
}

void LayoutNodes::Move(LayoutNode const* child, std::size_t index) {
    if (child == nullptr || child->m_owner != this) {
        return;
    }
    std::vector<LayoutNode*> moved;
    moved.reserve(m_nodes.size() + 1);
    for (LayoutNode* const node : m_nodes) {
        // Not looked at once more after the last entry: a target there drops the child and shows the last
        // entry twice.
        if (moved.size() == index) {
            moved.push_back(const_cast<LayoutNode*>(child));
        }
        if (node != child) {
            moved.push_back(node);
        }
    }
    std::copy_n(moved.begin(), std::min(moved.size(), m_nodes.size()), m_nodes.begin());
}

void LayoutNodes::CopyFrom(LayoutNodes const& source, Parents parents) {
    struct Level {
        LayoutNodes const* from;
        LayoutNodes* to;
    };
    std::vector<Level> open;
    open.push_back({&source, this});
    while (!open.empty()) {
        auto const [from, to] = open.back();
        open.pop_back();
        to->m_nodes.reserve(from->m_nodes.size());
        for (LayoutNode const* const node : from->m_nodes) {
            auto* const copy = new LayoutNode(*node, LayoutNode::WithoutChildren());
            to->Own(*copy);
            // Not indexed: a lookup by name finds nothing in a copy, which readers and writers of files count
            // on.
            to->m_nodes.push_back(copy);
            if (parents == Parents::OfTheCopy) {
                copy->m_parent = to->m_holder;
            }
            if (node->Size() != 0) {
                open.push_back({&node->m_children, &copy->m_children});
            }
        }
    }
}

void LayoutNodes::Take(LayoutNodes& other) noexcept {
    m_nodes.swap(other.m_nodes);
    m_index.swap(other.m_index);
    m_firstOwned = std::exchange(other.m_firstOwned, nullptr);
    m_lastOwned = other.m_lastOwned;
    for (LayoutNode* node = m_firstOwned; node != nullptr; node = node->m_nextOwned) {
        node->m_owner = this;
    }
}

void LayoutNodes::Own(LayoutNode& node) noexcept {
    (m_firstOwned != nullptr ? m_lastOwned->m_nextOwned : m_firstOwned) = &node;
    node.m_previousOwned = std::exchange(m_lastOwned, &node);
    node.m_nextOwned = nullptr;
    node.m_owner = this;
}

void LayoutNodes::Disown(LayoutNode& node) noexcept {
    LayoutNode* const next = node.m_nextOwned;
    LayoutNode* const previous = node.m_previousOwned;
    (previous != nullptr ? previous->m_nextOwned : m_firstOwned) = next;
    (next != nullptr ? next->m_previousOwned : m_lastOwned) = previous;
    node.m_owner = nullptr;
}

/// Before the end: links the owned nodes as the list shows them, behind them those that it doesn't show, and
/// takes them off the index.
void LayoutNodes::LinkInListOrder() noexcept {
    for (LayoutNode* const shown : m_nodes) {
        shown->m_owner = nullptr; // until it is linked anew
    }
    LayoutNode* const first = std::exchange(m_firstOwned, nullptr);
    LayoutNode* notShown = nullptr; // the first of them, in a list of its own until the shown ones are linked
    LayoutNode** link = &notShown;
    for (LayoutNode* node = first; node != nullptr; node = node->m_nextOwned) {
        node->m_indexed = nullptr;
        if (node->m_owner == this) {
            *link = node;
            link = &node->m_nextOwned;
        }
    }
    *link = nullptr;
    m_lastOwned = nullptr;
    for (LayoutNode* const shown : m_nodes) {
        if (shown->m_owner == nullptr) {
            Own(*shown);
        }
    }
    while (LayoutNode* const node = notShown) {
        notShown = node->m_nextOwned;
        Own(*node);
    }
}

void LayoutNodes::Release(LayoutNode& node) noexcept {
    Disown(node);
    std::erase(m_nodes, &node);
    TakeOffIndex(node);
}

/// Its names go back to the children that had them before.
void LayoutNodes::TakeOffIndex(LayoutNode& node) noexcept {
    auto const passOn = [&](Index::value_type& entry) {
        Found& found = entry.second;
        if (found.node != &node) {
            return;
        }
        LayoutNode* bearer = found.bearers != 0 ? m_lastOwned : nullptr;
        while (bearer != nullptr && bearer->m_indexed != &entry) {
            bearer = bearer->m_previousOwned;
        }
        found.node = bearer;
        found.position = Unknown;
    };
    if (node.m_indexed != nullptr) {
        --node.m_indexed->second.bearers;
        passOn(*node.m_indexed);
    }
    if (node.m_hasEarlierNames) {
        for (Index::value_type& entry : m_index) {
            passOn(entry);
        }
    }
    node.m_indexed = nullptr;
    node.m_hasEarlierNames = false;
}

bool LayoutNodes::StandsBelow(LayoutNodes const& top) const noexcept {
    if (top.m_firstOwned == nullptr) {
        return false;
    }
    LayoutNodes const* list = this;
    while (list->m_holder != nullptr && list->m_holder->m_owner != nullptr) {
        list = list->m_holder->m_owner;
        if (list == &top) {
            return true;
        }
    }
    return false;
}

} // namespace Zantrel
