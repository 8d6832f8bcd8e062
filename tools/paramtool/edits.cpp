// SPDX-License-Identifier: Apache-2.0
//
// Changes to the values of a database, from a command line or from lines of a file.
//
// To look at: Objections and SetText, for what a layout lets a value be; LookOf, for what may be edited; the
// functions on profiles and items, which give a finding instead of doing what a user may not do.

#include "edits.h"

#include "common/host.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

/// What keeps an edit from being done, or speaks against it.
using Refusals = std::vector<Finding>;

/// A backslash before any other character is itself, as paths of Windows have them.
std::vector<std::wstring> SplitAtTabulators(std::wstring const& line) {
    std::vector<std::wstring> fields(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        static constexpr std::wstring_view escapes = L"\\tnr", meant = L"\\\t\n\r";
        std::size_t const escape =
            line[i] == L'\\' && i + 1 < line.size() ? escapes.find(line[i + 1]) : std::wstring_view::npos;
        if (escape != std::wstring_view::npos) {
            fields.back() += meant[escape];
            ++i;
        } else if (line[i] == L'\t') {
            fields.emplace_back();
        } else {
            fields.back() += line[i];
        }
    }
    return fields;
}

Finding Objection(Place const& place, FindingKind kind, Severity severity, std::wstring const& sentence) {
    Finding finding;
    finding.kind = kind;
    finding.severity = severity;
    finding.path = place.GetPath();
    finding.sentence = sentence;
    return finding;
}

Refusals SetValue(Edit const& edit, ParameterFile& file, bool isForced) {
    Place const place = file.FindLeaf(edit.words[0]);
    std::wstring const& text = edit.words[1];
    Refusals refusals;
    if (!isForced) {
        Look const look = LookOf(place);
        // The outermost reason is told alone: nothing within can be changed as long as it holds. That a place
        // isn't shown is no reason against setting it.
        for (LookReason const& reason : look.reasons) {
            if (!reason.isAboutVisibility) {
                refusals.push_back(
                    Objection(place, FindingKind::ReadOnly, Severity::Error, SentenceOf(reason, place)));
                return refusals;
            }
        }
        // Notes, as of an empty text, are for check to tell.
        for (Finding& finding : Objections(place, text)) {
            if (finding.severity == Severity::Error) {
                refusals.push_back(std::move(finding));
            }
        }
    }
    if (refusals.empty()) {
        if (std::optional<Finding> finding = SetText(place, text)) {
            refusals.push_back(std::move(*finding));
        }
    }
    return refusals;
}

Refusals RefusalsOf(EntryChange&& change, Output& output, ParameterFile const& file) {
    for (Finding const& reference : change.references) {
        output.Tell(MessageOf(file.m_input.Name(), reference));
    }
    return change ? Refusals() : Refusals{std::move(*change.finding)};
}

std::size_t IndexOf(std::wstring const& text) {
    std::size_t index = 0;
    for (wchar_t const digit : text) {
        // The bound keeps the number from wrapping; no list is as long.
        if (digit < L'0' || digit > L'9' || index > 1000000000) {
            Host::Fail(L'"' + text + L"\" is no index of an item");
        }
        index = 10 * index + static_cast<std::size_t>(digit - L'0');
    }
    if (text.empty()) {
        Host::Fail(L"An index is wanted, from 0");
    }
    return index;
}

/// What is done to the entries of a container. A list's functions take profile lists for nothing, and so the
/// kind is asked first.
struct EntryAction {
    wchar_t const* action;
    std::size_t words;
    EntryChange (*run)(Place const& list, std::vector<std::wstring> const& words);
};

// The name that no profile can have stands for the default profile, which add copies anyway.
constexpr wchar_t const* DefaultProfile = L"::DefaultProfile::";

EntryChange CopyProfile(Place const& list, std::vector<std::wstring> const& words) {
    return words[1] == DefaultProfile ? AddProfile(list, words[2])
                                      : DuplicateProfile(list, words[1], words[2]);
}

constexpr EntryAction EntryActions[] = {
    {L"profile add", 2, [](Place const& list, auto const& words) { return AddProfile(list, words[1]); }},
    {L"profile copy", 3, CopyProfile},
    {L"profile rename", 3,
     [](Place const& list, auto const& words) { return RenameProfile(list, words[1], words[2]); }},
    {L"profile remove", 2,
     [](Place const& list, auto const& words) { return RemoveProfile(list, words[1]); }},
    {L"item add", 1, [](Place const& list, auto const&) { return AddItem(list); }},
    {L"item move", 3,
     [](Place const& list, auto const& words) {
         return MoveItem(list, IndexOf(words[1]), IndexOf(words[2]));
     }},
    {L"item remove", 2,
     [](Place const& list, auto const& words) { return RemoveItem(list, IndexOf(words[1])); }},
};

/// How many words an action takes; 0: there is none of that name.
std::size_t WordsOfAction(std::wstring const& action) {
    for (EntryAction const& row : EntryActions) {
        if (action == row.action) {
            return row.words;
        }
    }
    return action == L"set" ? 2 : 0;
}

/// A generic file never says that a profile can be deleted, and so none of it could be without force.
void AllowRemoval(Place const& list, std::wstring const& name) {
    Place const profile = list.GetProfile(name);
    if (profile.IsValid()) {
        ParameterNode cursor = profile.GetCursor();
        cursor.SetCanBeDeleted(true);
    }
}

Refusals ChangeEntries(Edit const& edit, ParameterFile& file, bool isForced, Output& output) {
    bool const isOfProfiles = edit.action.compare(0, 7, L"profile") == 0;
    Place const list =
        file.FindContainer(edit.words[0], isOfProfiles ? PlaceKind::ProfileList : PlaceKind::List);
    if (isForced && edit.action == L"profile remove") {
        AllowRemoval(list, edit.words[1]);
    }
    for (EntryAction const& row : EntryActions) {
        if (edit.action == row.action) {
            return RefusalsOf(row.run(list, edit.words), output, file);
        }
    }
    return {};
}

void RequireWords(Edit const& edit) {
    std::size_t const wanted = WordsOfAction(edit.action);
    std::wstring const where = edit.where.empty() ? L"" : edit.where + L": ";
    if (wanted == 0) {
        Host::Fail(where + L"there is no change \"" + edit.action + L'"');
    }
    if (edit.words.size() != wanted) {
        Host::Fail(where + L'"' + edit.action + L"\" takes " + std::to_wstring(wanted) +
                   L" words, counting the path, not " + std::to_wstring(edit.words.size()));
    }
}

Edit ReadEdit(std::wstring const& line, std::wstring const& where) {
    if (line.find(L'\t') == std::wstring::npos) {
        return ReadSetting(line, where);
    }
    Edit edit{where, L"", SplitAtTabulators(line)};
    // The first fields are the action, of one word or of two.
    for (std::size_t words = edit.words.front() == L"set" ? 1 : 2; words != 0 && !edit.words.empty();
         --words) {
        edit.action += (edit.action.empty() ? L"" : L" ") + edit.words.front();
        edit.words.erase(edit.words.begin());
    }
    RequireWords(edit);
    return edit;
}

/// Whether --force would do it: what is no value, or isn't there, can't be had by any force.
bool IsForcible(Edit const& edit, Finding const& refusal) {
    if (edit.action == L"profile remove") {
        return refusal.kind == FindingKind::NotAllowed;
    }
    return edit.action == L"set" &&
           (refusal.kind == FindingKind::ReadOnly ||
            (refusal.kind >= FindingKind::BelowMinimum && refusal.kind <= FindingKind::NotUnique));
}

} // namespace

// A "=" may stand in the name of a profile, between brackets; of such names those with a bracket in them are
// what the fields with tabulators are for.
Edit ReadSetting(std::wstring const& text, std::wstring const& where) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        depth += text[i] == L'[' ? 1 : text[i] == L']' ? -1 : 0;
        if (text[i] == L'=' && depth <= 0) {
            return {where, L"set", {text.substr(0, i), text.substr(i + 1)}};
        }
    }
    Host::Fail((where.empty() ? L"" : where + L": ") + L"\"" + text + L"\" is no PATH=TEXT");
}

Edit MakeEdit(std::wstring const& action, std::wstring const& list, std::vector<std::wstring> const& words) {
    Edit edit{L"", action, words};
    edit.words.insert(edit.words.begin(), list);
    RequireWords(edit);
    return edit;
}

std::vector<Edit> ReadEdits(std::string const& text, std::wstring const& name) {
    std::vector<Edit> edits;
    std::size_t number = 0;
    for (std::size_t begin = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0; begin < text.size();) {
        // Also of the last line, which may have no end.
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        std::string const line =
            text.substr(begin, end - begin - (end > begin && text[end - 1] == '\r' ? 1 : 0));
        begin = end + 1;
        ++number;
        if (!line.empty() && line.front() != '#') {
            edits.push_back(
                ReadEdit(StringConversion::Utf8ToNative(line), name + L':' + std::to_wstring(number)));
        }
    }
    return edits;
}

void Apply(std::vector<Edit> const& edits, ParameterFile& file, bool isForced, Output& output) {
    bool hasRefusals = false, hasForcible = false;
    for (Edit const& edit : edits) {
        std::wstring const& name = edit.where.empty() ? file.m_input.Name() : edit.where;
        try {
            Refusals const refusals = edit.action == L"set" ? SetValue(edit, file, isForced)
                                                            : ChangeEntries(edit, file, isForced, output);
            for (Finding const& refusal : refusals) {
                output.Tell(MessageOf(name, refusal));
                hasRefusals = true;
                hasForcible = hasForcible || IsForcible(edit, refusal);
            }
        } catch (std::runtime_error const& error) {
            // A path that isn't there ends its own edit alone: what is wrong with the others is told as well,
            // before all of them are refused.
            std::wstring const sentence = StringConversion::Utf8ToNative(error.what());
            output.Tell({Severity::Error, name, 0, 0, sentence, edit.words.front()});
            hasRefusals = true;
        }
    }
    if (hasRefusals) {
        Host::Fail(file.m_input.Name() + L" is not changed" +
                   (hasForcible && !isForced ? L"; --force makes changes that the layout objects to" : L""));
    }
}

} // namespace Paramtool
