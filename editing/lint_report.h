// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/lint.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Zantrel::Editing {

/// Gathers what is found. A kind's severity comes from one table; a finding may have its own.
class LintReport {
public:
    /// `node` is null for the layout as a whole; then the path is empty.
    void Add(LintKind kind, LayoutNode const* node, std::wstring value, std::wstring sentence,
             LayoutNode const* other = nullptr, std::optional<Severity> severity = std::nullopt);

    std::vector<LintFinding> Take() { return std::move(m_findings); }

private:
    std::vector<LintFinding> m_findings;
};

/// What a node's default, limits, choices and rules have against each other.
void LintValues(LayoutNode const& node, LintReport& report);

/// Where a node stands, as far as its names are concerned.
struct LintPlace {
    ParameterLayout const* layout;
    LayoutNode const* parent; ///< null for the root
    bool isInEditor;          ///< below "ProfileEditor", and so in parameter files
};

/// What no reader takes for a name, and what a file format keeps for itself there.
void LintNames(LayoutNode const& node, LintPlace const& place, LintReport& report);

} // namespace Zantrel::Editing
