// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/vocabulary.h"

#include <zantrel/layout/layout_node.h>

#include <string>
#include <string_view>

namespace Zantrel {

/// An attribute of a "PropertyNode" that holds a text of the node, as it stands or, when it is written, in
/// the format's one language.
struct TextAttribute {
    std::string_view word;
    std::wstring LayoutNode::*field;
    bool isTranslated;
};

/// In the order in which they are written. The reader takes each where it is present; a translated text comes
/// back as it stands, since no dictionary leads from a text to its key.
inline constexpr TextAttribute TextAttributes[] = {
    {LayoutWord::DisplayName, &LayoutNode::m_displayName, true},
    {LayoutWord::DisplayNameContainer, &LayoutNode::m_containerDisplayName, true},
    {LayoutWord::PropertyName, &LayoutNode::m_propName, false},
    {LayoutWord::ProfileName, &LayoutNode::m_profileName, false},
};

} // namespace Zantrel
