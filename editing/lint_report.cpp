// SPDX-License-Identifier: Apache-2.0
#include "editing/lint_report.h"

#include "editing/enum_table.h"
#include "editing/node_path.h"

#include <cstddef>

namespace Zantrel::Editing {

namespace {

struct Row {
    LintKind kind;
    Severity severity;
};

// An error is what loses values or makes a file that can't be read; nothing fits an empty range.
constexpr Row Severities[] = {
    {LintKind::SameName, Severity::Error},
    {LintKind::BadName, Severity::Error},
    {LintKind::FormatWord, Severity::Error},
    {LintKind::BadDefault, Severity::Error},
    {LintKind::DefaultOutOfRange, Severity::Warning},
    {LintKind::DefaultNoOption, Severity::Warning},
    {LintKind::DefaultCut, Severity::Warning},
    {LintKind::BadLimit, Severity::Error},
    {LintKind::EmptyRange, Severity::Error},
    {LintKind::NoOptions, Severity::Warning},
    {LintKind::MissingProfileList, Severity::Warning},
    {LintKind::MissingSource, Severity::Warning},
    {LintKind::OwnSource, Severity::Warning},
    {LintKind::UnreachedSource, Severity::Warning},
    {LintKind::BadConditionValue, Severity::Warning},
    {LintKind::Unreached, Severity::Error},
    {LintKind::TwoContainers, Severity::Error},
    {LintKind::ForeignAnchor, Severity::Error},
    {LintKind::BadPattern, Severity::Warning},
    {LintKind::SameIdentifier, Severity::Warning},
    {LintKind::SamePropertyName, Severity::Error},
};

static_assert(HasRowForEach(Severities, &Row::kind, LintKind::SamePropertyName));

} // namespace

void LintReport::Add(LintKind kind, LayoutNode const* node, std::wstring value, std::wstring sentence,
                     LayoutNode const* other, std::optional<Severity> severity) {
    LintFinding& finding = m_findings.emplace_back();
    finding.kind = kind;
    finding.severity = severity.value_or(Severities[static_cast<std::size_t>(kind)].severity);
    // Put together for each finding anew: there are few of them, and most nodes have none.
    finding.path = PathOf(node);
    finding.node = node;
    finding.other = other;
    finding.value = std::move(value);
    finding.sentence = std::move(sentence);
}

} // namespace Zantrel::Editing
