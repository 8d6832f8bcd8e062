// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/parameter_layout.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>
#include <stdexcept>

// The anchors are pointers into the tree that a host may replace or empty, so whatever starts at one asks
// first. The tree itself is the truth: nothing here is kept beside it, and a question walks what it needs.

namespace Zantrel {

namespace {

/// The children of an anchor's node; a host may have emptied the anchor.
LayoutNodes const& ChildrenOf(LayoutNode const* anchor) {
    static LayoutNodes const none;
    return anchor != nullptr ? anchor->m_children : none;
}

void Append(LayoutNodes const& children, std::vector<LayoutNode const*>& nodes) {
    nodes.insert(nodes.end(), children.begin(), children.end());
}

} // namespace

ParameterLayout::ParameterLayout() : LayoutNode(L"SomeRootname", Group, nullptr) { _Init(); }

ParameterLayout::ParameterLayout(ParameterLayout const& source) = default;

ParameterLayout& ParameterLayout::operator=(ParameterLayout const& source) = default;

ParameterLayout::~ParameterLayout() = default;

void ParameterLayout::_Init() {
    m_versionNode = AddNode(L"Version")
                        ->AddNode<std::int32_t>(L"Major", Int, 1)
                        ->GetParentNode()
                        ->AddNode<std::int32_t>(L"Minor", Int, 0);
    m_profileEditor = AddNode(L"ProfileEditor");
    m_platformConfigurator = AddNode(L"PlatformConfigurator");
    m_platformOptions = m_platformConfigurator->AddNode(L"PlatformOptions");
    m_partOptions = m_platformConfigurator->AddNode(L"PartOptions");
    m_partConfigurator = AddNode(L"PartConfigurator");
}

void ParameterLayout::_InitCategoryLevel(bool withGeneric) {
    if (withGeneric) {
        m_genericParameters = m_profileEditor->AddNode(L"GenericParameters");
    }
    m_categories = m_profileEditor->AddNode(L"Categories")->SetCategoryList(true, L"Category");
}

void ParameterLayout::CheckAnchors() const {
    if (m_anchorSource.HasEnded()) {
        throw std::logic_error("The layout is a copy whose source has ended: build it where it stays.");
    }
}

// Of two profile lists neither is the one that a category is chosen from.
LayoutNode const* ParameterLayout::FindCategoryNode() const {
    CheckAnchors();
    LayoutNode const* found = nullptr;
    for (LayoutNode const* const child : ChildrenOf(m_profileEditor)) {
        if (child->m_isProfileList) {
            if (found != nullptr) {
                return nullptr;
            }
            found = child;
        }
    }
    return found;
}

// Called after each reading, often twice: an option that already chooses from the list, be it one of an
// earlier call or of the host, ends it. The option is complete before it is appended, as a failure in between
// would leave one that the next call doesn't know.
void ParameterLayout::AddCategoryNodeIfNeeded() {
    LayoutNode const* const list = FindCategoryNode();
    LayoutNode* const options = m_platformOptions;
    if (list == nullptr || options == nullptr) {
        return;
    }
    for (LayoutNode const* const option : options->m_children) {
        if (option->m_type == OptionsFromProfiles && option->m_profileName == list->m_name) {
            return;
        }
    }
    std::unique_ptr<LayoutNode> option(MakeNode(L"Category", OptionsFromProfiles, L""));
    option->SetProfileName(list->m_name)
        ->SetPropName(L"BuildProcessor.ProfileCategory")
        ->SetDisplayName(list->m_displayName);
    options->AppendNode(option.release());
    m_categoryOption = options->Back();
    options->MoveNodeTo(m_categoryOption, 0);
}

void ParameterLayout::GetBuildTicketNodes(std::vector<LayoutNode const*>& nodes) const {
    CheckAnchors();
    nodes.clear();
    Append(ChildrenOf(m_platformOptions), nodes);
    Append(ChildrenOf(m_partOptions), nodes);
}

void ParameterLayout::GetBuildTicketNodesPartOverrides(std::vector<LayoutNode const*>& nodes) const {
    CheckAnchors();
    nodes.clear();
    Append(ChildrenOf(m_partConfigurator), nodes);
}

bool ParameterLayout::GetReferredNodes(LayoutNode const* node, std::vector<LayoutNode const*>& nodes) const {
    CheckAnchors();
    nodes.clear();
    LayoutNode const* const editor = m_profileEditor;
    LayoutNode const* const list =
        node != nullptr && editor != nullptr ? editor->FindProfileList(node->m_profileName, true) : nullptr;
    if (list == nullptr) {
        return false;
    }
    // A list may stand in a member of another: the outer choice comes first.
    std::deque<LayoutNode const*> path;
    list->GetQueryPath(*editor, path);
    std::copy_if(path.begin(), path.end(), std::back_inserter(nodes),
                 [](LayoutNode const* step) { return step->m_isProfileList; });
    return true;
}

void ParameterLayout::GetUsedPropertyNames(std::set<std::wstring>& names) const {
    names.clear();
    AddUsedPropertyNames(names);
}

} // namespace Zantrel
