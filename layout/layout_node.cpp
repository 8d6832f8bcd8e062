// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include <zantrel/io/uuid.h>

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

LayoutNode& LayoutNode::operator=(LayoutNode const& source) {
    if (this != &source) {
        LayoutNodeAttributes attributes = static_cast<LayoutNodeAttributes const&>(source);
        bool const sourceEnds = source.m_children.StandsBelow(m_children);
        LayoutNode* const parent = sourceEnds || source.m_parent == this ? m_parent : source.m_parent;
        m_children = source.m_children; // the last use of the source, and the last thing that can fail
        static_cast<LayoutNodeAttributes&>(*this) = std::move(attributes);
        m_parent = parent;
    }
    return *this;
}

LayoutNode::~LayoutNode() {
    if (m_owner != nullptr) {
        m_owner->Release(*this);
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

LayoutNode* LayoutNode::AppendNode(LayoutNode* child) {
    if (child != nullptr && child != this && !m_children.StandsBelow(child->m_children)) {
        m_children.Append(child);
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
    LayoutNode const* mark = nullptr;
    for (LayoutNode const* node = this; node != &top; node = node->m_parent) {
        // A node below a copy of its own child: the copy still names the parent of its source, and the
        // parents form a ring. The mark, set at each power of two, is met again there.
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
