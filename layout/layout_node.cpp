// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include <zantrel/io/uuid.h>

#include "layout/child_list.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zantrel {

namespace {

std::wstring TextOf(wchar_t const* text) { return text != nullptr ? std::wstring(text) : std::wstring(); }

} // namespace

LayoutNode::LayoutNode(wchar_t const* name, eTypeLayoutNode type, wchar_t const* defaultValue) {
    m_type = type;
    m_name = TextOf(name);
    m_defaultValue = TextOf(defaultValue);
    if (type == Distance) {
        m_postfix = L"mm";
    }
}

LayoutNode::LayoutNode(LayoutNode const& source, WithoutChildren)
    : LayoutNodeAttributes(source), m_parent(source.m_parent) {}

LayoutNode::LayoutNode(LayoutNode const& source) : LayoutNode(source, WithoutChildren()) {
    m_children.CopyFrom(source.m_children, LayoutNodes::Parents::AsInSource);
}

// Everything that can fail comes before the first change. The children come last but for what can't fail, as
// the source may be one of those that they replace.
LayoutNode& LayoutNode::operator=(LayoutNode const& source) {
    if (this != &source) {
        LayoutNodeAttributes attributes = static_cast<LayoutNodeAttributes const&>(source);
        bool const keepsParent = source.StandsBelow(*this) || HasAtOrBelow(source.m_parent);
        LayoutNode* const parent = keepsParent ? m_parent : source.m_parent;
        m_children = source.m_children; // the last use of the source
        static_cast<LayoutNodeAttributes&>(*this) = std::move(attributes);
        m_parent = parent;
    }
    return *this;
}

LayoutNode::~LayoutNode() {
    if (m_owner != nullptr) {
        m_owner->Remove(*this);
    }
}

LayoutNode* LayoutNode::MakeNode(wchar_t const* name, eTypeLayoutNode type) {
    return new LayoutNode(name, type, nullptr);
}

LayoutNode* LayoutNode::MakeNode(LayoutNode const& source) { return new LayoutNode(source); }

LayoutNode* LayoutNode::AddNode(wchar_t const* name) {
    LayoutNode* const child = MakeNode(name, Group);
    AppendNode(child);
    return child;
}

LayoutNode* LayoutNode::AddNode(LayoutNode const& node) {
    LayoutNode* const child = MakeNode(node);
    AppendNode(child);
    return child;
}

LayoutNode const* LayoutNode::GetOwner() const noexcept {
    return m_owner != nullptr ? m_owner->Holder() : nullptr;
}

/// Up by ownership, which is never stale.
bool LayoutNode::StandsBelow(LayoutNode const& top) const noexcept {
    LayoutNode const* node = top.m_children.m_list != nullptr ? this : nullptr;
    while (node != nullptr && node != &top) {
        node = node->GetOwner();
    }
    return node != nullptr && node != this;
}

/// Down by ownership: looks for an address, behind which there may be no node any more. Depth first, along
/// the links of the tree itself, so that it can't fail.
bool LayoutNode::HasAtOrBelow(LayoutNode const* sought) const noexcept {
    LayoutNode const* node = sought != nullptr ? this : nullptr;
    while (node != nullptr && node != sought) {
        ChildList const* const list = node->m_children.m_list.get();
        LayoutNode const* next = list != nullptr ? list->FirstOwned() : nullptr;
        for (; next == nullptr && node != this; node = node->m_owner->Holder()) {
            next = node->m_owner->OwnedBehind(*node);
        }
        node = next;
    }
    return node != nullptr;
}

/// Two kinds of links lead up from a node: to the one that owns it, and m_parent, which in a copied subtree
/// is a node of the source. By neither may a node be its own ancestor. By ownership it can't: a node above
/// isn't appended. By m_parent it would be one where a link that isn't ownership leads from here, or from a
/// node above, into the tree of `child`; such a link is set right before, to the node that owns. The address
/// alone counts, as the source may have ended by now, and its memory may be that of `child`. Not seen is a
/// ring by way of a second copy, and for a child that never had children, of which a tree is built, one that
/// starts above this node: looking up all the way for each of them would take quadratic time in a deep tree.
void LayoutNode::LeadParentsPast(LayoutNode const& child) noexcept {
    for (LayoutNode* node = this; node != nullptr;) {
        LayoutNode* const owner = node->m_owner != nullptr ? node->m_owner->Holder() : nullptr;
        if (node->m_parent != owner) {
            if (!child.HasAtOrBelow(node->m_parent)) {
                return;
            }
            node->m_parent = owner;
        }
        node = child.m_children.m_wasFilled ? owner : nullptr;
    }
}

LayoutNode* LayoutNode::AppendNode(LayoutNode* child) {
    if (child != nullptr && child != this && !StandsBelow(*child)) {
        m_children.Append(child);
        LeadParentsPast(*child);
        child->m_parent = this;
        child->m_writeToParameterFile = m_childrenWriteToParameterFile;
    }
    return this;
}

LayoutNode* LayoutNode::AppendNode(LayoutNode const& child) {
    return AppendNode(const_cast<LayoutNode*>(&child));
}

LayoutNode* LayoutNode::AppendNode(wchar_t const* name) { return AppendNode(MakeNode(name, Group)); }

void LayoutNode::MoveNodeTo(LayoutNode const* child, std::size_t index) { m_children.Move(child, index); }

std::wstring LayoutNode::GenerateNewSourceIdentifier() { return L"SourceID_" + KelSDK::CreateUUID_t(); }

void LayoutNode::GenerateSourceIdentifier() {
    if (m_identifier.empty()) {
        m_identifier = GenerateNewSourceIdentifier();
    }
}

LayoutNode const* LayoutNode::GetNode(wchar_t const* name) const noexcept {
    return name != nullptr ? m_children.Find(name) : nullptr;
}

LayoutNode const* LayoutNode::FindProfileList(std::wstring const& name, bool recursive) const {
    std::vector<LayoutNode const*> open{this};
    while (!open.empty()) {
        LayoutNode const* const node = open.back();
        open.pop_back();
        LayoutNode const* const child = node->GetNode(name);
        if (child != nullptr && child->m_isProfileList) {
            return child;
        }
        if (recursive) {
            std::reverse_copy(node->m_children.begin(), node->m_children.end(), std::back_inserter(open));
        }
    }
    return nullptr;
}

bool LayoutNode::GetQueryPath(LayoutNode const& top, std::deque<LayoutNode const*>& path) const {
    path.clear();
    // AppendNode ties no ring of parents that it can see, but m_parent is a field that a host may set, and
    // several copies that stand below each other's sources can form one. So the walk sets a mark at each
    // power of two steps: once a stretch between two marks is as long as the ring, the walk meets the mark
    // again, after at most four times as many steps as there are nodes on the way.
    LayoutNode const* mark = nullptr;
    for (LayoutNode const* node = this; node != &top; node = node->m_parent) {
        if (node == nullptr || node == mark) {
            return false;
        }
        path.push_front(node);
        if ((path.size() & (path.size() - 1)) == 0) {
            mark = node;
        }
    }
    return true;
}

std::wstring LayoutNode::GetQueryName(LayoutNode const& top) const {
    std::deque<LayoutNode const*> path;
    GetQueryPath(top, path);
    // The walk goes upwards and puts "_" only before a text, so empty names at the lower end leave no trace.
    while (!path.empty() && path.back()->m_name.empty()) {
        path.pop_back();
    }
    std::wstring text;
    for (LayoutNode const* const node : path) {
        text += node == path.front() ? L"" : L"_";
        text += node->m_name;
    }
    return text;
}

LayoutNode const* LayoutNode::AddUsedPropertyNames(std::set<std::wstring>& names) const {
    std::vector<LayoutNode const*> open{this};
    while (!open.empty()) {
        LayoutNode const* const node = open.back();
        open.pop_back();
        if (!node->m_propName.empty()) {
            names.insert(node->m_propName);
        }
        std::reverse_copy(node->m_children.begin(), node->m_children.end(), std::back_inserter(open));
    }
    return this;
}

LayoutNode* LayoutNode::AddLicenseCheckForEditorVisibility(std::wstring const& license) {
    m_editorLicenseChecks.push_back(license);
    return this;
}

LayoutNode* LayoutNode::SetList(bool isList, wchar_t const* nodeName, std::wstring const& nodeDisplayName) {
    m_isList = isList;
    m_nodeName = TextOf(nodeName);
    if (!nodeDisplayName.empty()) {
        m_nodeDisplayName = nodeDisplayName;
    }
    return this;
}

LayoutNode* LayoutNode::SetProfile(bool isProfile, wchar_t const* nodeName) {
    m_isProfileList = isProfile;
    m_nodeName = TextOf(nodeName);
    return this;
}

LayoutNode* LayoutNode::SetCategoryList(bool isCategory, wchar_t const* nodeName) {
    m_isProfileList = m_isProfileList || isCategory;
    m_isCategoryList = isCategory;
    m_nodeName = TextOf(nodeName);
    return this;
}

// Neither form sets m_profileName: hosts that bind by node and hosts that bind by name each count on theirs
// alone.
LayoutNode* LayoutNode::SetTypeFromProfiles(LayoutNode const* profileList) {
    if (profileList != nullptr) {
        m_type = OptionsFromProfiles;
        m_nodeName = profileList->m_name;
        m_profileNode = profileList;
    }
    return this;
}

LayoutNode* LayoutNode::SetTypeFromProfiles(wchar_t const* name) {
    m_type = OptionsFromProfiles;
    m_nodeName = TextOf(name);
    return this;
}

LayoutNode* LayoutNode::AddOption(std::wstring const& value, std::wstring const& displayName) {
    std::wstring shown(displayName); // which may stand in the vector that grows next
    m_optionValues.push_back(value);
    try {
        m_optionDisplayNames.push_back(std::move(shown));
    } catch (...) {
        m_optionValues.pop_back(); // the index is all that links the two
        throw;
    }
    return this;
}

LayoutNode* LayoutNode::SetImageDescription(std::wstring image, std::wstring stretch) {
    m_imageDescription = std::move(image);
    m_imageStretch = std::move(stretch);
    return this;
}

} // namespace Zantrel
