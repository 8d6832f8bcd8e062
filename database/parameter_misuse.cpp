// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_misuse.h>

#include <zantrel/layout/layout_node.h>

#include <vector>

namespace Zantrel {

namespace {

/// By owners and not by parents, which in a copied layout lead into the source, and that may have ended.
std::wstring PathFromRoot(LayoutNode const* node) {
    std::vector<LayoutNode const*> steps; // from the node up
    for (; node != nullptr && node->GetOwner() != nullptr; node = node->GetOwner()) {
        steps.push_back(node);
    }
    std::wstring path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        path.append(path.empty() ? L"" : L"_").append((*step)->m_name);
    }
    return path;
}

} // namespace

ParameterMisuse::ParameterMisuse(char const* text, LayoutNode const* node)
    : std::runtime_error(text), m_node(node),
      m_path(std::make_shared<std::wstring const>(PathFromRoot(node))) {}
ParameterMisuse::ParameterMisuse(ParameterMisuse const& other) noexcept = default;
ParameterMisuse& ParameterMisuse::operator=(ParameterMisuse const& other) noexcept = default;
ParameterMisuse::~ParameterMisuse() = default;

} // namespace Zantrel
