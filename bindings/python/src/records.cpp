// SPDX-License-Identifier: Apache-2.0
#include "records.h"

#include "values.h"

#include <cstddef>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

// The words of kinds, by their number; the last of each enumeration must be the table's. Scripts compare and
// store them, so that a word stays once it is here, whatever the library calls its kind.
template <class Kind, std::size_t Size> struct Words {
    char const* words[Size];
    char const* operator[](Kind kind) const { return words[static_cast<std::size_t>(kind)]; }
};
template <class Kind, Kind Last, class... Word> constexpr auto MakeWords(Word... words) {
    static_assert(sizeof...(words) == static_cast<std::size_t>(Last) + 1, "a word for each kind");
    return Words<Kind, sizeof...(words)>{{words...}};
}

constexpr auto NoteWords = MakeWords<ReadReport::Kind, ReadReport::Kind::MissingElement>(
    "cannot_read", "document_error", "refused_document", "untaken_element", "unparsed_text",
    "unparsed_attribute", "dropped_value", "untaken_attribute", "passed_over", "missing_element");
constexpr auto SeverityWords = MakeWords<Severity, Severity::Error>("note", "warning", "error");
constexpr auto FindingWords = MakeWords<FindingKind, FindingKind::OutOfRange>(
    "no_number", "no_whole_number", "no_flag", "no_file", "no_value", "below_minimum", "above_maximum",
    "no_option", "no_such_profile", "too_long", "against_pattern", "too_few_items", "too_many_items",
    "not_unique", "empty", "read_only", "not_allowed", "name_in_use", "bad_name", "out_of_range");
constexpr auto DifferenceWords =
    MakeWords<Difference::Kind, Difference::Kind::Removed>("value", "flag", "added", "removed");
constexpr auto StepWords = MakeWords<MigrationStep::Kind, MigrationStep::Kind::Refused>(
    "taken", "converted", "renamed", "dropped", "new", "refused");
constexpr auto LintWords = MakeWords<LintKind, LintKind::SamePropertyName>(
    "same_name", "bad_name", "format_word", "bad_default", "default_out_of_range", "default_no_option",
    "default_cut", "bad_limit", "empty_range", "no_options", "missing_profile_list", "missing_source",
    "own_source", "unreached_source", "bad_condition_value", "unreached", "two_containers", "foreign_anchor",
    "bad_pattern", "same_identifier", "same_property_name");
constexpr auto LayoutDifferenceWords = MakeWords<LayoutDifference::Kind, LayoutDifference::Kind::Attribute>(
    "added", "removed", "moved", "attribute");
constexpr auto SourceWords =
    MakeWords<EffectiveValue::Source, EffectiveValue::Source::PartOverride>("layout", "ticket", "part");

/// " It takes 50 to 400 W.": empty for what has neither limits nor unit.
std::wstring RangeOf(LayoutNode const& layout) {
    std::wstring text;
    if (!layout.m_min.empty() && !layout.m_max.empty()) {
        text = layout.m_min + L" to " + layout.m_max;
    } else if (!layout.m_min.empty()) {
        text = layout.m_min + L" and more";
    } else if (!layout.m_max.empty()) {
        text = L"up to " + layout.m_max;
    }
    std::wstring const& unit = layout.m_postfix;
    if (text.empty()) {
        return unit.empty() ? L"" : L" Its unit is " + unit + L'.';
    }
    return L" It takes " + text + (unit.empty() ? L"" : L' ' + unit) + L'.';
}

} // namespace

py::object RecordOf(ReadReport::Entry const& entry) {
    return TypeNamed("Note")(NoteWords[entry.kind], entry.line, entry.column, StrOf(entry.path),
                             StrOf(entry.sentence));
}

py::object RecordOf(Finding const& finding, std::uint64_t line, std::uint64_t column) {
    return TypeNamed("Finding")(FindingWords[finding.kind], SeverityWords[finding.severity],
                                StrOf(finding.path), StrOf(finding.value), StrOf(finding.limit),
                                StrOf(finding.sentence), line, column);
}

// Of flags the library has texts alone, which in a script would both be true.
py::object RecordOf(Difference const& difference) {
    bool const isFlag = difference.kind == Difference::Kind::Flag;
    return TypeNamed("Difference")(
        DifferenceWords[difference.kind], StrOf(difference.path), StrOf(difference.what),
        isFlag ? py::bool_(difference.before == L"true") : ValueOf(difference.first),
        isFlag ? py::bool_(difference.after == L"true") : ValueOf(difference.second));
}

py::object RecordOf(MigrationStep const& step) {
    return TypeNamed("Step")(StepWords[step.kind], StrOf(step.path), StrOf(step.newPath), StrOf(step.what),
                             StrOf(step.before), StrOf(step.after), StrOf(step.reason));
}

py::object RecordOf(LintFinding const& finding) {
    return TypeNamed("LintFinding")(LintWords[finding.kind], SeverityWords[finding.severity],
                                    StrOf(finding.path), StrOf(finding.value), StrOf(finding.sentence));
}

py::object RecordOf(LayoutDifference const& difference) {
    return TypeNamed("LayoutDifference")(LayoutDifferenceWords[difference.kind], StrOf(difference.path),
                                         StrOf(difference.what), StrOf(difference.before),
                                         StrOf(difference.after));
}

py::object RecordOf(EffectiveValue const& value) {
    py::object typed = StrOf(value.text);
    if (value.value != nullptr) {
        // Of the ticket's own type, which need not be the layout's.
        if (PropertyCast<double>(value.value) != nullptr) {
            typed = ValueOfText(Double, value.text);
        } else if (PropertyCast<std::int32_t>(value.value) != nullptr) {
            typed = ValueOfText(Int, value.text);
        } else if (PropertyCast<bool>(value.value) != nullptr) {
            typed = ValueOfText(Bool, value.text);
        }
    } else if (value.node != nullptr) {
        typed = ValueOfText(value.node->m_type, value.text);
    }
    return TypeNamed("EffectiveValue")(StrOf(value.property), typed, SourceWords[value.source]);
}

py::object RecordOf(Choice const& choice) {
    return TypeNamed("Choice")(StrOf(choice.value), StrOf(choice.displayName), choice.isDefaultProfile);
}

// What was left out is a note, too, so that nobody who counts them takes a list that was cut for all.
py::list NotesOf(ReadReport const& report) {
    py::list notes = RecordsOf(report.m_entries);
    if (report.m_leftOut != 0) {
        notes.append(TypeNamed("Note")(NoteWords[ReadReport::Kind::PassedOver], 0, 0, "",
                                       "and " + std::to_string(report.m_leftOut) + " more"));
    }
    return notes;
}

// One sentence for all findings: an exception is mostly read where it is printed, and rarely asked.
void RaiseRefused(std::vector<Finding> const& findings, Node* parameter) {
    std::wstring sentence = findings.empty() ? L"" : findings.front().path + L": ";
    for (std::size_t i = 0; i < findings.size(); ++i) {
        sentence += (i == 0 ? L"" : L" ") + findings[i].sentence;
    }
    if (parameter != nullptr) {
        sentence += RangeOf(parameter->Layout());
    }
    Raise("Refused", StrOf(sentence), RecordsOf(findings));
}

void RequireDone(EntryChange const& change) {
    if (!change) {
        RaiseRefused({*change.finding}, nullptr);
    }
}

} // namespace ZantrelPython
