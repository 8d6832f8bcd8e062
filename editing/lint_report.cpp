// SPDX-License-Identifier: Apache-2.0
#include "editing/lint_report.h"

#include <cstddef>
#include <iterator>

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

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(Severities); ++i) {
        if (static_cast<std::size_t>(Severities[i].kind) != i) {
            return false;
        }
    }
    return std::size(Severities) == static_cast<std::size_t>(LintKind::SamePropertyName) + 1;
}
static_assert(IsInOrder(), "a row for each kind");

/// By ownership, for in a copy the parents are those of the source.
std::wstring PathOf(LayoutNode const* node) {
    std::vector<LayoutNode const*> steps;
    for (; node != nullptr && node->GetOwner() != nullptr; node = node->GetOwner()) {
        steps.push_back(node);
    }
    std::wstring path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        path.append(path.empty() ? L"" : L"/").append((*step)->m_name);
    }
    return path;
}

} // namespace

void LintReport::Add(LintKind kind, LayoutNode const* node, std::wstring value, std::wstring sentence,
                     LayoutNode const* other, std::optional<Severity> severity) {
    LintFinding& finding = m_findings.emplace_back();
    finding.kind = kind;
    finding.severity = severity.value_or(Severities[static_cast<std::size_t>(kind)].severity);
    finding.path = PathOf(node);
    finding.node = node;
    finding.other = other;
    finding.value = std::move(value);
    finding.sentence = std::move(sentence);
}

} // namespace Zantrel::Editing
