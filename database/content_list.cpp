// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/content_list.h>

#include "database/entries.h"
#include "database/value_cursor.h"
#include "database/value_type.h"

#include <zantrel/layout/layout_node.h>

#include <iterator>
#include <utility>

namespace Zantrel {

bool ContentList::Node::operator<(std::wstring_view path) const noexcept {
    return EntryNameLess()(m_path, path);
}

bool operator<(std::wstring_view path, ContentList::Node const& node) noexcept {
    return EntryNameLess()(path, node.m_path);
}

ContentList::ContentList() = default;
ContentList::ContentList(ContentList const& source) = default;
ContentList::ContentList(ContentList&& source) noexcept { m_nodes.swap(source.m_nodes); }
ContentList& ContentList::operator=(ContentList const& source) = default;
ContentList& ContentList::operator=(ContentList&& source) noexcept {
    ContentList taken(std::move(source));
    m_nodes.swap(taken.m_nodes);
    return *this;
}
ContentList::~ContentList() = default;

namespace {

ContentList::Node::Value CaptureValue(ParameterNode const& leaf) {
    ContentList::Node::Value captured{};
    VisitValueType(leaf.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, double>) {
            captured.number = ValueCursor(leaf)._GetReference<double>();
        } else if constexpr (std::is_same_v<T, bool>) {
            captured.flag = ValueCursor(leaf)._GetReference<bool>();
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            captured.text = &ValueCursor(leaf)._GetReference<std::wstring>();
        }
    });
    return captured;
}

/// Walks down from a cursor. One text holds the path of where it stands.
class LeafCollector {
public:
    LeafCollector(ContentList& list, std::wstring const& prefix)
        : m_list(list), m_next(list.m_nodes.end()), m_path(prefix) {}

    void Collect(ParameterNode const& cursor) {
        if (!cursor.IsValid() || cursor.m_pNode == nullptr) {
            return; // the layout has more here than the database
        }
        LayoutNode const& node = *cursor.m_pNode;
        if (!cursor.m_isContainer) {
            node.Size() == 0 ? AddLeaf(cursor) : CollectChildren(cursor);
        } else if (node.m_isList) {
            CollectItems(cursor);
        } else if (node.m_isProfileList || node.m_isCategoryList) {
            CollectProfiles(cursor);
        }
    }

private:
    void CollectChildren(ParameterNode const& cursor) {
        for (LayoutNode const* const child : cursor.m_pNode->m_children) {
            CollectStep(cursor.Get(child), {child->m_name});
        }
    }

    void CollectItems(ParameterNode const& list) {
        unsigned long long index = 0;
        VisitItems(list, [&](ParameterNode const& item) {
            CollectStep(item, {list.m_pNode->m_nodeName, L"[", std::to_wstring(index), L"]"});
            ++index;
        });
    }

    void CollectProfiles(ParameterNode const& list) {
        std::wstring const& entry = list.m_pNode->m_nodeName;
        CollectStep(list.GetDefault(), {entry, L"::Default::"});
        std::wstring const* last = nullptr;
        VisitProfiles(list, [&](std::wstring const& name, ParameterNode const& profile) {
            if (last == nullptr || *last != name) { // a further one of that name leads to the first, too
                CollectStep(profile, {entry, L"[", name, L"]"});
            }
            last = &name;
        });
    }

    void CollectStep(ParameterNode const& cursor, std::initializer_list<std::wstring_view> parts) {
        std::size_t const length = m_path.size();
        m_path.append(length != 0 ? L"_" : L"");
        for (std::wstring_view const part : parts) {
            m_path.append(part);
        }
        Collect(cursor);
        m_path.resize(length);
    }

    void AddLeaf(ParameterNode const& leaf) {
        ContentList::Node node;
        node.m_value = CaptureValue(leaf); // first: what can't be read isn't listed
        node.m_path = m_path;
        node.m_pLayout = leaf.m_pNode;
        node.m_pProperties = leaf.m_pProperties;
        // Behind the last one, where in a sorted layout it belongs. Of two leaves on one path the first
        // stays.
        m_next = std::next(m_list.m_nodes.insert(m_next, std::move(node)));
    }

    ContentList& m_list;
    std::set<ContentList::Node, std::less<>>::iterator m_next;
    std::wstring m_path;
};

} // namespace

void ParameterNode::CreateContentList(ContentList& list) const {
    list.m_nodes.clear();
    _CreateContentList(&list);
}

void ParameterNode::_CreateContentList(ContentList* list) const {
    if (m_pNode == nullptr || m_pNode->m_type != Group || m_isContainer) {
        return;
    }
    if (list == nullptr) {
        m_contentList =
            std::make_shared<ContentList>(); // before the walk: where that fails, what it found stays
        list = m_contentList.get();
    }
    _AddToMap(*list, std::wstring());
}

void ParameterNode::_AddToMap(ContentList& list, std::wstring const& prefix) const {
    LeafCollector(list, prefix).Collect(*this);
}

ParameterNode ParameterNode::Query(wchar_t const* path) const {
    if (m_contentList == nullptr) {
        _CreateContentList(nullptr);
    }
    ParameterNode found;
    if (path != nullptr && m_contentList != nullptr) {
        auto const node = m_contentList->m_nodes.find(std::wstring_view(path));
        if (node != m_contentList->m_nodes.end()) {
            found.m_pNode = node->m_pLayout;
            found.m_pProperties = node->m_pProperties;
        }
    }
    return found;
}

} // namespace Zantrel
