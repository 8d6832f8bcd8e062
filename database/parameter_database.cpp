// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_database.h>

#include "database/format.h"

#include <zantrel/layout/parameter_layout.h>

namespace Zantrel {

ParameterDatabase::ParameterDatabase(ParameterLayout const* layout) : m_pLayout(layout) {
    if (layout != nullptr) {
        Format();
    }
}

ParameterDatabase::ParameterDatabase(ParameterDatabase const& other) : m_pLayout(other.m_pLayout) {
    m_properties._AssignWithinLayout(other.m_properties);
}

ParameterDatabase& ParameterDatabase::operator=(ParameterDatabase const& other) {
    m_properties._AssignWithinLayout(other.m_properties);
    m_pLayout = other.m_pLayout;
    return *this;
}

ParameterNode ParameterDatabase::GetRoot() {
    ParameterNode root;
    root.m_pNode = m_pLayout;
    root.m_pProperties = &m_properties;
    return root;
}

ParameterNode ParameterDatabase::GetProfileEditor() {
    return m_pLayout != nullptr ? GetRoot().Get(m_pLayout->m_profileEditor.GetNode()) : ParameterNode();
}

void ParameterDatabase::Format() {
    if (m_pLayout != nullptr && m_pLayout->m_profileEditor.GetNode() != nullptr) {
        FormatNode(*m_pLayout->m_profileEditor.GetNode(), m_properties);
    }
}

bool ParameterDatabase::IsEqual(ParameterDatabase const& other) const {
    return m_pLayout == other.m_pLayout && m_properties == other.m_properties;
}

} // namespace Zantrel
