// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "errors.h"
#include "node.h"

#include <zantrel/editing/editing.h>
#include <zantrel/sax/read_report.h>

#include <optional>
#include <vector>

namespace ZantrelPython {

/// A value as the record of _types.py that it is there.
py::object RecordOf(Zantrel::ReadReport::Entry const& entry);
py::object RecordOf(Zantrel::Editing::Finding const& finding, std::uint64_t line = 0,
                    std::uint64_t column = 0);
py::object RecordOf(Zantrel::Editing::Difference const& difference);
py::object RecordOf(Zantrel::Editing::MigrationStep const& step);
py::object RecordOf(Zantrel::Editing::LintFinding const& finding);
py::object RecordOf(Zantrel::Editing::LayoutDifference const& difference);
py::object RecordOf(Zantrel::Editing::EffectiveValue const& value);
py::object RecordOf(Zantrel::Editing::Choice const& choice);

template <class Things> py::list RecordsOf(Things const& things) {
    py::list records;
    for (auto const& thing : things) {
        records.append(RecordOf(thing));
    }
    return records;
}
/// The entries of a report, and how many it left out.
py::list NotesOf(Zantrel::ReadReport const& report);

/// Raises Refused with the findings' sentences; `node` says in what range and unit the values are.
[[noreturn]] void RaiseRefused(std::vector<Zantrel::Editing::Finding> const& findings, Node* parameter);
/// The same where an entry wasn't changed; otherwise nothing.
void RequireDone(Zantrel::Editing::EntryChange const& change);

} // namespace ZantrelPython
