// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/editing/differences.h>
#include <zantrel/editing/look.h>
#include <zantrel/editing/migration.h>
#include <zantrel/editing/validation.h>
#include <zantrel/editing/value_text.h>

namespace Fuzz {

namespace {

using namespace TestSupport;
using namespace Zantrel::Editing;

/// The same places with other types, and lists where single values were.
void AppendChanged(LayoutNode& to, LayoutNode const& from) {
    for (LayoutNode const* const child : from.m_children) {
        auto const type =
            child->m_type == Group ? Group : static_cast<eTypeLayoutNode>(child->m_type % 10 + 1);
        LayoutNode* const made = to.AddNode(child->m_name.c_str(), type, L"1");
        made->SetIsList(child->m_isList != (child->m_type % 3 == 1))
            ->SetIsProfileList(child->m_isProfileList);
        made->SetNodeName(L"Entry");
        AppendChanged(*made, *child);
    }
}

struct ChangedLayout : ParameterLayout {
    explicit ChangedLayout(ParameterLayout const& from) {
        m_name = L"Changed";
        AppendChanged(*m_profileEditor, *from.m_profileEditor);
    }
};

bool Read(ParameterDatabase& database, std::string const& document) {
    std::istringstream in(document);
    return ReadStream(database, in);
}

/// Of a profile that can be deleted no file says so, and read again it is one that can't.
std::string WithoutDeletion(std::string text) {
    constexpr std::string_view attribute = " CanBeDeleted=\"false\"";
    for (std::size_t at = 0; (at = text.find(attribute, at)) != text.npos;) {
        text.erase(at, attribute.size());
    }
    return text;
}

std::string FaultOfSameMigration(ParameterDatabase const& database) {
    Migration const same = Migrate(database, *database.GetLayout());
    for (MigrationStep const& step : same.steps) {
        if (step.kind != MigrationStep::Kind::Taken) {
            return "a step to the same layout";
        }
    }
    bool const isSame = same.database.IsEqual(database) || WriteText(same.database) == WriteText(database);
    return isSame ? "" : "the migration to the same layout";
}

std::string FaultOfOtherMigration(ParameterDatabase const& database, bool isTwice) {
    static ChangedLayout const changed(*database.GetLayout());
    Migration const once = Migrate(database, changed);
    std::string const written = WriteText(once.database);
    if (isTwice) {
        return WriteText(Migrate(once.database, changed).database) == written ? ""
                                                                              : "what was migrated twice";
    }
    ParameterDatabase back(&changed);
    bool const isBack = Read(back, written) && WithoutDeletion(WriteText(back)) == WithoutDeletion(written);
    return isBack ? "" : "what was migrated";
}

std::string FaultOfReports(ParameterDatabase const& database, std::size_t documentSize) {
    if (!Differences(database, ParameterDatabase(database)).empty()) {
        return "the differences";
    }
    return Validate(database).size() > 64 * documentSize + 100 ? "the findings" : "";
}

std::string FaultOfLooks(ParameterDatabase const& database) {
    for (LookWalk walk(database); walk.Next();) {
        if (walk.GetLook().reasons.empty() != (walk.GetLook().isVisible && walk.GetLook().isEditable)) {
            return "a look";
        }
    }
    return "";
}

/// Any text is taken as a value or leaves the place as it is, and a value's own text leaves it, too.
bool Takes(Place const& place, std::wstring const& text) {
    std::wstring const before = TextOf(place.GetCursor());
    bool const isTaken = !SetText(place, text);
    std::wstring const after = TextOf(place.GetCursor());
    return isTaken ? !SetText(place, after) && TextOf(place.GetCursor()) == after : after == before;
}

std::string FaultOfTexts(ParameterDatabase& database, std::string const& document) {
    std::size_t const begin = std::min(document.find('>') + 1, document.size());
    std::wstring const text =
        StringConversion::Utf8ToNative(document.substr(begin, document.find('<', begin) - begin));
    for (PlaceWalk<ParameterNode> walk(database); walk.Next();) {
        Place const& place = walk.GetPlace();
        bool const isText =
            place.IsLeaf() && place.GetLayoutNode()->m_type != FileAttachment; // no file's name
        if (isText && !(Takes(place, TextOf(place.GetCursor())) && Takes(place, text))) {
            return "a text";
        }
    }
    return "";
}

} // namespace

std::string FaultOfEditing(std::string const& document, unsigned share) {
    static SmallLayout const layout;
    ParameterDatabase database(&layout);
    Read(database, document);
    switch (share) {
    case 0:
        return FaultOfSameMigration(database);
    case 1:
    case 2:
        return FaultOfOtherMigration(database, share == 2);
    case 3:
        return FaultOfReports(database, document.size());
    case 4:
        return FaultOfLooks(database);
    default:
        return FaultOfTexts(database, document);
    }
}

} // namespace Fuzz
