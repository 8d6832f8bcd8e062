// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/dump.h"

#include <zantrel/database/parameter_misuse.h>

#include <string>
#include <vector>

namespace Zantrel {

using TestSupport::Dump;

/// A layout with a leaf of every type and every way for containers to nest.
struct TestLayout : ParameterLayout {
    LayoutNode* editor = m_profileEditor;
    LayoutNode* group = editor->AddNode(L"Parameters");
    LayoutNode* number = group->AddNode(L"Layer count", Int, L"12abc");
    LayoutNode* real = group->AddNode(L"Power", Double, L"0.1");
    LayoutNode* length = group->AddNode(L"Thickness", Distance, L"0.05");
    LayoutNode* flag = group->AddNode(L"Supports", Bool, L"True");
    LayoutNode* text = group->AddNode(L"Material", String, L" steel ");
    LayoutNode* option =
        group->AddNode(L"Strategy", Options, L"")->AddOption(L"Fast", L"")->AddOption(L"Fine", L"");
    LayoutNode* member = group->AddNode(L"Scanner", OptionsFromProfiles, L"Left");
    LayoutNode* path = group->AddNode(L"Path", FileAbsolute, L"a.txt");
    LayoutNode* file = group->AddNode(L"Attachment", FileAttachment, L"ignored");
    LayoutNode* byDriver = group->AddNode(L"Gas", StandardOptions, L"Argon");

    LayoutNode* ranges = editor->AddNode(L"Ranges")->SetList(true, L"Range", L"")->SetMultiplicity(2);
    LayoutNode* begin = ranges->AddNode(L"Begin", Double, L"1.5");
    LayoutNode* steps = ranges->AddNode(L"Steps")->SetList(true, L"Step", L"")->SetMultiplicity(1);
    LayoutNode* step = steps->AddNode(L"Width", Int, L"7");
    LayoutNode* counts = editor->AddNode(L"Counts", Int, L"5")->SetList(true, L"Count", L"");
    LayoutNode* machines = editor->AddNode(L"Machines")->SetProfile(true, L"Machine");
    LayoutNode* speed = machines->AddNode(L"Speed", Double, L"30");
};

/// A database on such a layout, and cursors on its parts.
struct TestDatabase {
    TestLayout layout;
    ParameterDatabase values{&layout};

    ParameterNode Editor() { return values.GetProfileEditor(); }
    ParameterNode At(LayoutNode const* node) { return Editor().Get(node); }
};

/// The members that derived cursors use.
struct OpenCursor : ParameterNode {
    explicit OpenCursor(ParameterNode const& cursor) : ParameterNode(cursor) {}
    using ParameterNode::_FormatContent;
    using ParameterNode::_GetReference;
    using ParameterNode::_SetValue;
};

/// What a call throws as misuse; nothing if nothing.
template <class Call> std::string MisuseOf(Call const& call) {
    try {
        call();
        return "";
    } catch (ParameterMisuse const& misuse) {
        return misuse.what();
    }
}

inline std::vector<std::wstring> ProfilesOf(ParameterNode const& list) {
    std::vector<std::wstring> names{L"what stood here before"};
    list.GetProfiles(names);
    return names;
}

/// The names of all entries of a bag, those of inner bags in brackets.
inline std::wstring Shape(PersistentProperties const& bag) {
    std::wstring shape;
    for (auto const& [name, property] : bag) {
        shape.append(shape.empty() ? L"" : L" ").append(name);
        if (auto const* inner = PropertyCast<PersistentProperties>(property)) {
            shape += L"(" + Shape(inner->m_value) + L")";
        } else if (auto const* items = PropertyCast<IndexedProperties<PersistentProperties>>(property)) {
            for (unsigned long long i = 0; i < items->m_value.GetNumProperties(); ++i) {
                shape += L"[" + Shape(items->m_value.GetProperty(static_cast<std::int32_t>(i))) + L"]";
            }
        }
    }
    return shape;
}

} // namespace Zantrel
