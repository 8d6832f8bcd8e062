// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_database.h>

#include "database/format.h"
#include "database/layout_shapes.h"
#include "store/bag_access.h"

#include <zantrel/layout/parameter_layout.h>

// A database is a root bag and the layout that it was formatted to. Under the root bag stands the profile
// editor and nothing else, unless somebody formats twice: then a second editor stands behind the first, where
// no cursor gets.

namespace Zantrel {

ParameterDatabase::ParameterDatabase(ParameterLayout const* layout) : m_pLayout(layout) {
    if (layout != nullptr) {
        Format();
    }
}

ParameterDatabase::ParameterDatabase(ParameterDatabase const& other)
    : m_pLayout(other.m_pLayout), m_shapes(other.m_shapes) {
    BagAccess::AssignWithinLayout(m_properties, other.m_properties);
}

ParameterDatabase& ParameterDatabase::operator=(ParameterDatabase const& other) {
    BagAccess::AssignWithinLayout(m_properties, other.m_properties);
    m_pLayout = other.m_pLayout;
    m_shapes = other.m_shapes; // of what stood here before there is nothing left
    return *this;
}

namespace {

ParameterNode RootOf(ParameterLayout const* layout, PersistentProperties& properties) {
    ParameterNode root;
    root.m_pNode = layout;
    root.m_pProperties = &properties;
    return root;
}

template <class Cursor> Cursor ProfileEditorBelow(Cursor const& root, ParameterLayout const* layout) {
    return layout != nullptr ? root.Get(layout->m_profileEditor.GetNode()) : Cursor();
}

} // namespace

ParameterNode ParameterDatabase::GetRoot() { return RootOf(m_pLayout, m_properties); }
ParameterView ParameterDatabase::GetRoot() const { return RootOf(m_pLayout, m_properties); }

ParameterNode ParameterDatabase::GetProfileEditor() { return ProfileEditorBelow(GetRoot(), m_pLayout); }
ParameterView ParameterDatabase::GetProfileEditor() const { return ProfileEditorBelow(GetRoot(), m_pLayout); }

// A second time with the shapes of the first, since bags stand on these.
void ParameterDatabase::Format() {
    if (m_pLayout == nullptr || m_pLayout->m_profileEditor.GetNode() == nullptr) {
        return;
    }
    m_pLayout->CheckAnchors();
    LayoutNode const& editor = *m_pLayout->m_profileEditor.GetNode();
    if (m_shapes == nullptr) {
        m_shapes = LayoutShapes::Of(*m_pLayout);
        FormatNode(editor, m_properties, m_shapes->Top(), FittingShapes(*m_shapes));
    } else {
        FormatNode(editor, m_properties, m_shapes->Top(), FittingShapes());
    }
}

// The layout is compared by address: databases on two layouts that say the same aren't equal.
bool ParameterDatabase::IsEqual(ParameterDatabase const& other) const {
    return m_pLayout == other.m_pLayout && m_properties == other.m_properties;
}

} // namespace Zantrel
