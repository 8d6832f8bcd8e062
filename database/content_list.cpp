// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/content_list.h>

#include "database/path_index.h"
#include "database/path_order.h"
#include "store/bag_access.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/walk.h>
#include <zantrel/layout/layout_node.h>

#include <iterator>
#include <utility>

// An index is made in one walk and then only read. A leaf is listed whole or not at all: its value is read
// before it is inserted, so that a walk which ends with an exception leaves what it had found, sorted and
// good for look-ups. The cursor that keeps an index stores it before the walk for the same reason: it doesn't
// try again, and answers from what there is.

namespace Zantrel {

bool ContentList::Node::operator<(std::wstring_view path) const noexcept {
    return EntryNameLess()(m_path, path);
}

bool operator<(std::wstring_view path, ContentList::Node const& node) noexcept {
    return EntryNameLess()(path, node.m_path);
}

ContentList::ContentList() = default;
ContentList::ContentList(ContentList const& source) = default;
ContentList::ContentList(ContentList&& source) noexcept = default;
ContentList& ContentList::operator=(ContentList const& source) = default;
ContentList& ContentList::operator=(ContentList&& source) noexcept = default;
ContentList::~ContentList() = default;

namespace {

ContentList::Node::Value CaptureValue(ParameterNode const& leaf) {
    ContentList::Node::Value captured{};
    VisitValueType(leaf.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, double>) {
            captured.number = leaf.GetValue<double>();
        } else if constexpr (std::is_same_v<T, bool>) {
            captured.flag = leaf.GetValue<bool>();
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            captured.text = &leaf.GetValue<std::wstring>();
        }
    });
    return captured;
}

/// The leaf that a walk stands on, which becomes a node where a set makes one.
struct Leaf {
    ParameterNode const& at;
    std::wstring const& prefix;
    Walk<ParameterNode> const& walk;

    operator ContentList::Node() const {
        ContentList::Node node;
        node.m_value = CaptureValue(at); // first: what can't be read isn't listed
        if (!prefix.empty()) {
            node.m_path.append(prefix).append(walk.Depth() == 0 ? L"" : L"_");
        }
        node.m_path.append(walk.Path());
        node.m_pLayout = at.m_pNode;
        node.m_pProperties = at.m_pProperties;
        return node;
    }
};

/// Tells `maker`, where there is one, of each leaf that it adds.
void AddLeaves(ParameterNode const& top, std::wstring const& prefix, ContentList::Nodes& nodes,
               PathIndex::Maker* maker) {
    PathOrder order(nodes);
    for (Walk walk(top, SameNames::FirstOnly, TwofoldContainers::AreLists); walk.Next();) {
        order.ComeTo(walk);
        ParameterNode const& at = walk.Node();
        if (!at.IsValid()) {
            walk.SkipContent(); // the layout has more here than the database
        } else if (walk.IsLeaf()) {
            std::size_t const before = nodes.size();
            // Made in its place, so that the text of its path follows it in memory: a look-up reads both.
            auto const place = nodes.emplace_hint(order.Hint(), Leaf{at, prefix, walk});
            order.Stand(place);
            if (maker != nullptr && nodes.size() != before) { // of two leaves on one path the first stays
                maker->Add(place);
            }
        }
    }
}

} // namespace

ContentList::Nodes::iterator ContentList::Nodes::Find(std::wstring_view path) const noexcept {
    PathIndex::Place const* const found = m_index != nullptr ? m_index->Find(path) : nullptr;
    return found != nullptr ? *found : Set::find(path);
}

void ParameterNode::CreateContentList(ContentList& list) const {
    list.m_nodes.clear();
    _CreateContentList(&list);
}

void ParameterNode::_CreateContentList(ContentList* list) const {
    if (m_pNode == nullptr || m_pNode->m_type != Group || m_isContainer) {
        return;
    }
    if (list != nullptr) {
        _AddToMap(*list, std::wstring());
        return;
    }
    m_contentList = std::make_shared<ContentList>();
    ContentList::Nodes& nodes = m_contentList->m_nodes;
    PathIndex::Maker maker;
    AddLeaves(*this, std::wstring(), nodes, &maker);
    nodes.m_index = std::make_shared<PathIndex>(maker.Make());
}

void ParameterNode::_AddToMap(ContentList& list, std::wstring const& prefix) const {
    AddLeaves(*this, prefix, list.m_nodes, nullptr);
}

// A cursor on anything but a group has no index, and finds nothing.
ParameterNode ParameterNode::Query(wchar_t const* path) const {
    if (m_contentList == nullptr) {
        _CreateContentList(nullptr);
    }
    ParameterNode found;
    if (path != nullptr && m_contentList != nullptr) {
        auto const node = m_contentList->m_nodes.find(path);
        if (node != m_contentList->m_nodes.end()) {
            found.m_pNode = node->m_pLayout;
            found.m_pProperties = node->m_pProperties;
        }
    }
    return found;
}

} // namespace Zantrel
