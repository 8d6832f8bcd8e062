// SPDX-License-Identifier: Apache-2.0
#include "editing/node_path.h"

#include <string_view>
#include <vector>

namespace Zantrel::Editing {

std::wstring PathOf(LayoutNode const* node) {
    // The root gives no step, and a node without an owner is taken for it, whatever it is called.
    std::vector<std::wstring_view> names;
    for (; node != nullptr && node->GetOwner() != nullptr; node = node->GetOwner()) {
        names.emplace_back(node->m_name);
    }
    std::wstring path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        path.append(name == names.rbegin() ? L"" : L"/").append(*name);
    }
    return path;
}

} // namespace Zantrel::Editing
