// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Zantrel {

struct LayoutNode;

/// A condition: the node that has it depends on the value of another node. Stored and written to files; what
/// it means for the editor is the host's business.
///
/// A copied condition names the same node: in a copy of a tree conditions still depend on nodes of the
/// source.
struct LayoutNodeSource {
    LayoutNode* m_source = nullptr; ///< not owned; must live as long as the condition
    std::wstring m_value;           ///< the text that the source's value is compared with
};

} // namespace Zantrel
