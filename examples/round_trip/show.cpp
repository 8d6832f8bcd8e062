// SPDX-License-Identifier: Apache-2.0
//
// Showing a database as a tree.
//
// To look at: Walk with its Kind, Depth, Name and Layout, which tell what stands at a place and how it is
// called; SameNames::FirstAgain, which shows profiles of one name as a file will hold them; SkipContent.

#include "trees.h"

#include "common/cursors.h"

#include <ostream>

namespace RoundTrip {

namespace {

using namespace Zantrel;

/// " = 0.03 mm".
std::wstring ValueText(ParameterView const& leaf) {
    std::wstring const text = Host::ValueText(leaf);
    return text.empty() ? text : L" = " + text;
}

/// "  {Above | Symmetric | Below}": what could be chosen.
std::wstring ChoicesText(LayoutNode const& layout) {
    std::wstring text;
    for (std::wstring const& name : layout.m_optionDisplayNames) {
        text += (text.empty() ? L"" : L" | ") + name;
    }
    if (layout.m_type == OptionsFromProfiles) {
        text = L"a profile of " + layout.m_profileName;
    }
    return text.empty() ? text : L"  {" + text + L'}';
}

/// "  (read-only, hidden)".
std::wstring FlagsText(ParameterView const& node) {
    std::wstring text = node.GetLayoutNode()->m_readOnly ? L"read-only by layout" : L"";
    std::wstring const flags = Host::FlagsText(node);
    text += (text.empty() || flags.empty() ? L"" : L", ") + flags;
    return text.empty() ? text : L"  (" + text + L')';
}

std::wstring TitleOf(AnyWalk const& place) {
    switch (place.Kind()) {
    case PlaceKind::Item:
        return L"#" + std::to_wstring(place.Index() + 1);
    case PlaceKind::DefaultProfile:
        return L"[default]";
    case PlaceKind::Profile:
        return L"[" + std::wstring(place.Name()) + L"]";
    default:
        return place.Depth() == 0 || place.Layout().m_displayName.empty() ? std::wstring(place.Name())
                                                                          : place.Layout().m_displayName;
    }
}

} // namespace

void Show(ParameterView const& top, std::ostream& out) {
    for (Walk walk(top, SameNames::FirstAgain); walk.Next();) {
        ParameterView const& node = walk.Node();
        if (!node.IsValid()) {
            walk.SkipContent(); // nothing is stored here
            continue;
        }
        std::wstring line = std::wstring(2 * walk.Depth(), L' ') + TitleOf(walk);
        if (node.IsContainer()) {
            line += L": " + std::to_wstring(node.GetSize()) + L" x " + walk.Layout().m_nodeName;
        } else if (walk.IsLeaf()) {
            line += ValueText(node) + ChoicesText(walk.Layout());
        }
        out << StringConversion::NativeToUtf8(line + FlagsText(node)) << '\n';
    }
}

} // namespace RoundTrip
