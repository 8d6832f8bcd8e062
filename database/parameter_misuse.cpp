// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_misuse.h>

#include <zantrel/layout/layout_node.h>

namespace Zantrel {

namespace {

/// Goes by parents alone: in a copied layout they lead into the source, which is alive as long as the copy.
std::wstring PathFromRoot(LayoutNode const* node) {
    LayoutNode const* root = node;
    while (root != nullptr && root->Parent() != nullptr) {
        root = root->Parent();
    }
    return node != nullptr ? node->GetQueryName(*root) : std::wstring();
}

} // namespace

ParameterMisuse::ParameterMisuse(char const* text, LayoutNode const* node)
    : std::runtime_error(text), m_node(node),
      m_path(std::make_shared<std::wstring const>(PathFromRoot(node))) {}
ParameterMisuse::ParameterMisuse(ParameterMisuse const& other) noexcept = default;
ParameterMisuse& ParameterMisuse::operator=(ParameterMisuse const& other) noexcept = default;
ParameterMisuse::~ParameterMisuse() = default;

} // namespace Zantrel
