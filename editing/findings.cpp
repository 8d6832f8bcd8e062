// SPDX-License-Identifier: Apache-2.0
#include "editing/findings.h"

#include "editing/enum_table.h"

#include <cstddef>
#include <utility>

// All sentences stand in one table, so that they can be read beside each other and a new kind can't be
// without one. Findings also carry their parts: a host that speaks another language needs no sentence, and
// none is ever taken apart.

namespace Zantrel::Editing {

namespace {

/// What is said of a kind; %v stands for the value, %l for the limit, %n for the name of the place.
struct Words {
    FindingKind kind;
    Severity severity;
    std::wstring_view sentence;
};

constexpr Words Table[] = {
    {FindingKind::NoNumber, Severity::Error, L"%v is no number."},
    {FindingKind::NoWholeNumber, Severity::Error, L"%v is no whole number of 32 bits."},
    {FindingKind::NoFlag, Severity::Error, L"%v is neither \"true\" nor \"false\"."},
    {FindingKind::NoFile, Severity::Error, L"%v is no file that can be read."},
    {FindingKind::NoValue, Severity::Error, L"\"%n\" holds no value that could be set."},
    {FindingKind::BelowMinimum, Severity::Error, L"%v is below the least value, %l."},
    {FindingKind::AboveMaximum, Severity::Error, L"%v is above the greatest value, %l."},
    {FindingKind::NoOption, Severity::Error, L"%v is none of the options: %l."},
    {FindingKind::NoSuchProfile, Severity::Error, L"There is no profile %v in \"%l\"."},
    {FindingKind::TooLong, Severity::Error, L"%v is longer than %l characters."},
    {FindingKind::AgainstPattern, Severity::Error, L"%v doesn't follow the rule: %l"},
    {FindingKind::TooFewItems, Severity::Error, L"There are %v entries; at least %l are needed."},
    {FindingKind::TooManyItems, Severity::Error, L"There are %v entries; at most %l are allowed."},
    {FindingKind::NotUnique, Severity::Error, L"%v stands already at %l and must be unique."},
    {FindingKind::Empty, Severity::Note, L"\"%n\" is empty, which the layout doesn't allow."},
    {FindingKind::ReadOnly, Severity::Error, L"\"%n\" is read-only."},
    {FindingKind::NotAllowed, Severity::Error, L"The layout doesn't allow this at \"%n\": %l"},
    {FindingKind::NameInUse, Severity::Error, L"There is a profile %v already in \"%l\"."},
    {FindingKind::BadName, Severity::Error, L"%v is no name for a profile."},
    {FindingKind::OutOfRange, Severity::Error, L"There is no item %v; the list has %l."},
};

static_assert(HasRowForEach(Table, &Words::kind, FindingKind::OutOfRange));

std::wstring Fill(std::wstring_view sentence, std::wstring_view value, std::wstring_view limit,
                  std::wstring_view name) {
    std::wstring filled;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        if (sentence[i] != L'%') {
            filled += sentence[i];
            continue;
        }
        // What is filled in isn't looked at again: a value may hold a "%". In the table one never stands
        // last.
        wchar_t const part = sentence[++i];
        filled += part == L'v' ? value : part == L'l' ? limit : name;
    }
    return filled;
}

/// As a user knows the place.
std::wstring_view NameOf(PlaceView const& place) {
    LayoutNode const* const layout = place.GetLayoutNode();
    if (layout != nullptr && !layout->m_displayName.empty() && !place.IsEntry()) {
        return layout->m_displayName;
    }
    // An item has no name of its own.
    return layout != nullptr && place.GetName().empty() ? layout->m_nodeName : place.GetName();
}

/// In a sentence: a longer text would drown it, and the finding has all of it.
constexpr std::size_t LongestQuoted = 80;

/// A number as it stands, everything else in quotes.
bool IsPlain(FindingKind kind) {
    return kind == FindingKind::BelowMinimum || kind == FindingKind::AboveMaximum ||
           kind == FindingKind::TooFewItems || kind == FindingKind::TooManyItems ||
           kind == FindingKind::OutOfRange;
}

} // namespace

std::wstring Cut(std::wstring_view text, std::size_t longest) {
    if (text.size() <= longest) {
        return std::wstring(text);
    }
    // Where characters are of two halves none is cut in two.
    bool const isHalf = text[longest - 1] >= 0xD800 && text[longest - 1] <= 0xDBFF;
    return std::wstring(text.substr(0, isHalf ? longest - 1 : longest)) + L"...";
}

std::wstring Quoted(std::wstring_view text) {
    return std::wstring(L"\"").append(Cut(text, LongestQuoted)).append(L"\"");
}

Finding MakeFinding(FindingKind kind, PlaceView const& place, std::wstring value, std::wstring limit,
                    std::wstring_view shownLimit) {
    constexpr std::size_t longestLimit = 200;
    // The kind is the index, which the assertion above keeps true.
    Words const& words = Table[static_cast<std::size_t>(kind)];
    Finding finding;
    finding.kind = kind;
    finding.severity = words.severity;
    finding.path = place.GetPath();
    finding.cursor = place.GetCursor();
    finding.sentence =
        Fill(words.sentence, IsPlain(kind) ? value : Quoted(value),
             shownLimit.empty() ? Cut(limit, longestLimit) : shownLimit, Cut(NameOf(place), LongestQuoted));
    finding.value = std::move(value);
    finding.limit = std::move(limit);
    return finding;
}

} // namespace Zantrel::Editing
