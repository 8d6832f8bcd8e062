// SPDX-License-Identifier: Apache-2.0
//
// Writing a file that was changed. It may be the only copy of what a new one doesn't hold, and so nothing is
// touched before it is known what would be lost.

#include "common/host.h"
#include "edits.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

// There are two ways. Where all edits set values that the file has elements for, only the bytes of these are
// changed, and the library refuses unless nothing else has changed with them. Else the file is written anew,
// and what that would lose is found out before: of the values by writing and reading back, of comments, of
// which values know nothing, by looking at the bytes.
using TextsEditor = bool (*)(ParameterLayout const&, std::wstring const&, std::vector<ValueText> const&,
                             std::wstring const&, WriteReport*);

std::size_t CommentsIn(std::wstring const& path) {
    // As UTF-8 has it, and UTF-16 of either byte order.
    static constexpr std::string_view beginnings[] = {"<!--", {"<\0!\0-\0-", 7}};
    std::string const text = BytesOf(path);
    std::size_t count = 0;
    for (std::string_view const beginning : beginnings) {
        for (std::size_t at = text.find(beginning); at != std::string::npos;
             at = text.find(beginning, at + beginning.size())) {
            ++count;
        }
    }
    return count;
}

/// What edits say of places, to be asked for each of many losses.
class Edited {
public:
    explicit Edited(std::vector<Edit> const& edits) {
        for (Edit const& edit : edits) {
            m_paths.insert(edit.words.front());
            if (edit.action.compare(0, 7, L"profile") == 0) {
                m_lists[edit.words.back()].insert(edit.words.front());
            }
        }
    }

    /// Whether it is a flag of a profile that an edit has made: no file keeps these, and none has had them.
    bool HasMade(Difference const& loss) const {
        // By the two ends of the path, which can't be taken apart: names may hold what joins them.
        std::wstring const& path = loss.path;
        bool const isFlag = loss.kind == Difference::Kind::Flag && !path.empty() && path.back() == L']';
        for (std::size_t at = path.find(L'['); isFlag && at != path.npos; at = path.find(L'[', at + 1)) {
            auto const lists = m_lists.find(path.substr(at + 1, path.size() - at - 2));
            if (lists != m_lists.end() && HasBeginning(lists->second, path)) {
                return true;
            }
        }
        return false;
    }

    /// The path of an edit at that place or below it; null where there is none.
    std::wstring const* FindBelow(std::wstring const& path) const {
        auto const found = m_paths.lower_bound(path);
        return found != m_paths.end() && found->compare(0, path.size(), path) == 0 ? &*found : nullptr;
    }

private:
    static bool HasBeginning(std::set<std::wstring> const& lists, std::wstring const& path) {
        return std::any_of(lists.begin(), lists.end(),
                           [&](std::wstring const& list) { return path.compare(0, list.size(), list) == 0; });
    }

    std::set<std::wstring> m_paths;
    std::map<std::wstring, std::set<std::wstring>> m_lists; ///< of profiles, by the name that an edit gives
};

/// Fails where an edit itself is among what can't be read back: no force keeps it.
void RequireKept(ParameterFile const& file, Edited const& edited, std::vector<Difference> const& losses) {
    for (Difference const& loss : losses) {
        // A loss of a place is told at its top, so that an edit below it has the loss's path as its
        // beginning. Without a flag the values are kept.
        std::wstring const* const path =
            loss.kind == Difference::Kind::Flag ? nullptr : edited.FindBelow(loss.path);
        if (path != nullptr) {
            std::wstring reason;
            for (std::wstring const& cause : CausesOfLosses(file.m_database, file.m_format)) {
                reason += L"; " + cause;
            }
            Host::Fail(file.m_input.Name() + L" is not written, since it can't keep " + *path + reason);
        }
    }
}

void Refuse(std::wstring const& target, std::wstring const& why) {
    Host::Fail(target + L" is not written, because of " + why);
}

/// Tells what of the values the file said and would no longer say, and fails unless that is agreed to.
void RequireNoLoss(ParameterFile const& file, std::vector<Difference> const& losses, bool isForced,
                   Output& output) {
    if (losses.empty() && file.m_passedOver == 0) {
        return;
    }
    output.Remark(L"Writing what was read of " + file.m_input.Name() + L" loses " +
                  (file.m_passedOver != 0 ? L"what was passed over" : L"") +
                  (file.m_passedOver != 0 && !losses.empty() ? L", and " : L"") +
                  (losses.empty() ? L"" : L"these:"));
    TellLosses(output, losses);
    if (!isForced) {
        Refuse(file.m_input.Name(), L"these losses; --force accepts them");
    }
}

/// That what is to be written comes back but for what may be lost.
void RequireReturn(ParameterFile const& file, ParameterDatabase const& database,
                   std::vector<Edit> const& edits, SaveOptions const& options, Output& output) {
    Edited const edited(edits);
    ParameterDatabase readBack(database.GetLayout());
    std::vector<Difference> losses = LossesOf(database, readBack, file.m_format);
    losses.erase(std::remove_if(losses.begin(), losses.end(),
                                [&](Difference const& loss) { return edited.HasMade(loss); }),
                 losses.end());
    RequireKept(file, edited, losses);
    RequireNoLoss(file, losses, options.isForced, output);
}

/// Whether the file is as the library writes what it holds.
bool IsAsWritten(ParameterFile const& file) {
    ScratchFile const scratch;
    {
        // From the file and not from the database, which has the edits by now: what differs is the form
        // alone.
        ParameterDatabase copy(file.m_database.GetLayout());
        Read(copy, file.m_input.Path(), file.m_input.Name(), file.m_format);
        Write(copy, scratch.Path(), file.m_format);
    }
    return BytesOf(file.m_input.Path()) == BytesOf(scratch.Path());
}

/// The same of comments and of how the file is laid out, where it is written over itself.
void RequireNoCommentLost(ParameterFile const& file, SaveOptions const& options, Output& output) {
    std::wstring const& name = file.m_input.Name();
    // In a CDATA section the same text is no comment: then one is told too many, which is better than one too
    // few.
    std::size_t const comments = CommentsIn(file.m_input.Path());
    if (comments != 0 && !options.isForced && !options.isBackedUp) {
        Refuse(name, std::to_wstring(comments) + (comments == 1 ? L" comment" : L" comments") +
                         L" that a file loses when it is written anew; --backup keeps the old one, --force "
                         L"accepts it");
    }
    if (!IsAsWritten(file)) {
        output.Remark(name + L" is written anew, which sets its lines and blanks otherwise" +
                      (comments != 0 ? L" and ends its comments" : L""));
    }
}

void BackUp(std::wstring const& path, SaveOptions const& options, Output& output) {
    if (!options.isBackedUp) {
        return;
    }
    std::wstring const backup = path + L".bak";
    // The one before goes first: on Windows libstdc++ takes any two files for the same one and overwrites
    // none.
    std::error_code error;
    std::filesystem::remove(Host::PathOf(Utf8(backup)), error);
    std::filesystem::copy_file(Host::PathOf(Utf8(path)), Host::PathOf(Utf8(backup)), error);
    if (error) {
        Host::Fail(L"Can't keep " + path + L" as " + backup + L", and so it isn't changed");
    }
    output.m_json["backup"] = Utf8(backup);
}

/// What came by the standard input goes to the standard output unless another place is named.
bool IsInPlace(ParameterFile const& file, SaveOptions const& options) {
    return options.output.empty() && !file.m_input.IsStandard();
}

std::wstring TargetOf(ParameterFile const& file, SaveOptions const& options) {
    return IsInPlace(file, options) ? file.m_input.Name() : options.output.empty() ? L"-" : options.output;
}

void Finish(OutputFile const& target, std::wstring const& name, std::vector<std::wstring> const& notes,
            Output& output) {
    target.Finish();
    output.m_json["output"] = Utf8(name);
    for (std::wstring const& note : notes) {
        output.Remark(name + L": " + note);
    }
}

/// Changes the bytes of the values alone. False where that can't be done; then nothing was touched.
bool SaveTexts(ParameterFile const& file, std::vector<Edit> const& edits, SaveOptions const& options,
               Output& output) {
    std::vector<ValueText> texts;
    for (Edit const& edit : edits) {
        texts.push_back({edit.words[0], edit.words[1]});
    }
    // Overloaded by the kind of path; the casts pick the function that takes wide ones.
    auto const change = file.m_format == ParameterFormat::Machine
                            ? static_cast<TextsEditor>(&KlvrProperties::EditValueTexts)
                            : static_cast<TextsEditor>(&EditValueTexts);
    std::wstring const name = TargetOf(file, options);
    OutputFile const target(name, output);
    if (IsInPlace(file, options)) {
        BackUp(name, options, output);
    }
    WriteReport report;
    report.m_mayWriteInPlace = options.mayWriteInPlace;
    if (!change(*file.m_database.GetLayout(), file.m_input.Path(), texts, target.Path(), &report)) {
        return false;
    }
    Finish(target, name, report.m_notes, output);
    return true;
}

} // namespace

void SaveOptions::Declare(CommandLine& line) {
    line.Take("--output", output, "write here instead of to FILE", "OTHER");
    line.Flag("--backup", isBackedUp, "keep FILE as it was, with .bak behind its name");
    line.Flag("--in-place", mayWriteInPlace, "write over FILE where it stands if it can't be replaced");
    line.Flag("--force", isForced, "accept losses, and values that the layout objects to");
}

void SaveAnew(ParameterFile const& file, ParameterDatabase const& database, std::vector<Edit> const& edits,
              SaveOptions const& options, Output& output) {
    bool const isInPlace = IsInPlace(file, options);
    std::wstring const name = TargetOf(file, options);
    OutputFile const target(name, output);
    RequireReturn(file, database, edits, options, output);
    if (isInPlace) {
        RequireNoCommentLost(file, options, output);
        BackUp(name, options, output);
    }
    Finish(target, name, Write(database, target.Path(), file.m_format, options.mayWriteInPlace), output);
}

void Save(ParameterFile& file, std::vector<Edit> const& edits, SaveOptions const& options, Output& output) {
    bool const isOfValues =
        std::all_of(edits.begin(), edits.end(), [](Edit const& edit) { return edit.action == L"set"; });
    if (isOfValues) {
        // Its values have done their part, and a file may be so large that there is no room for them twice.
        file.Empty();
        if (SaveTexts(file, edits, options, output)) {
            return;
        }
        file.ReadAgain();
        Apply(edits, file, options.isForced, output);
    }
    SaveAnew(file, file.m_database, edits, options, output);
}

int Change(Context& context, std::wstring const& name, std::vector<Edit> const& edits,
           SaveOptions const& options) {
    RefuseToReplace({context.layout}, options.output);
    LayoutSource const source(context.layout);
    ParameterFile file(context.output, source, name);
    Apply(edits, file, options.isForced, context.output);
    Save(file, edits, options, context.output);
    context.output.m_json["changes"] = edits.size();
    return Same;
}

} // namespace Paramtool
