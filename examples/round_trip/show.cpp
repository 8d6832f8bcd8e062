// SPDX-License-Identifier: Apache-2.0
#include "trees.h"

#include "common/cursors.h"

#include <ostream>

namespace RoundTrip {

namespace {

using Zantrel::LayoutNode;
using Zantrel::ParameterNode;

/// " = 0.03 mm".
std::wstring ValueText(ParameterNode const& leaf) {
    std::wstring const text = Host::ValueText(leaf);
    return text.empty() ? text : L" = " + text;
}

/// "  {Above | Symmetric | Below}": what could be chosen.
std::wstring ChoicesText(LayoutNode const& layout) {
    std::wstring text;
    for (std::wstring const& name : layout.m_optionDisplayNames) {
        text += (text.empty() ? L"" : L" | ") + name;
    }
    if (layout.m_type == Zantrel::OptionsFromProfiles) {
        text = L"a profile of " + layout.m_profileName;
    }
    return text.empty() ? text : L"  {" + text + L'}';
}

/// "  (read-only, hidden)".
std::wstring FlagsText(ParameterNode const& node) {
    std::wstring text = node.m_pNode->m_readOnly ? L"read-only by layout" : L"";
    std::wstring const flags = Host::FlagsText(node);
    text += (text.empty() || flags.empty() ? L"" : L", ") + flags;
    return text.empty() ? text : L"  (" + text + L')';
}

void ShowNode(ParameterNode const& node, std::wstring const& title, std::size_t depth, std::ostream& out);

void ShowEntries(ParameterNode const& list, std::size_t depth, std::ostream& out) {
    if (!list.m_pNode->m_isProfileList) {
        for (unsigned long long i = 0; i < list.GetSize(); ++i) {
            ShowNode(list.GetListNode(i), L"#" + std::to_wstring(i + 1), depth, out);
        }
        return;
    }
    ShowNode(list.GetDefault(), L"[default]", depth, out);
    for (std::wstring const& name : ProfilesOf(list)) {
        ShowNode(list.GetProfile(name.c_str()), L"[" + name + L"]", depth, out);
    }
}

void ShowNode(ParameterNode const& node, std::wstring const& title, std::size_t depth, std::ostream& out) {
    if (!node.IsValid()) {
        return; // nothing is stored here
    }
    LayoutNode const& layout = *node.m_pNode;
    std::wstring line = std::wstring(2 * depth, L' ') + title;
    if (node.m_isContainer) {
        line += L": " + std::to_wstring(node.GetSize()) + L" x " + layout.m_nodeName;
    } else if (layout.Size() == 0) {
        line += ValueText(node) + ChoicesText(layout);
    }
    out << StringConversion::NativeToUtf8(line + FlagsText(node)) << '\n';
    if (node.m_isContainer) {
        ShowEntries(node, depth + 1, out);
        return;
    }
    for (std::size_t i = 0; i < layout.Size(); ++i) {
        LayoutNode const& child = layout.At(i);
        ShowNode(node.Get(&child), child.m_displayName.empty() ? child.m_name : child.m_displayName,
                 depth + 1, out);
    }
}

} // namespace

void Show(ParameterNode const& node, std::ostream& out) { ShowNode(node, node.m_pNode->m_name, 0, out); }

} // namespace RoundTrip
