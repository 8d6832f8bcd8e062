// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_database.h"

#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using TestSupport::Generator;

using Kind = Difference::Kind;
using Lines = std::vector<std::wstring>;

std::wstring Line(Difference const& difference, bool isExchanged = false) {
    static wchar_t const* const words[] = {L"value ", L"flag ", L"added ", L"removed "};
    bool const isAlone = difference.kind == Kind::Added || difference.kind == Kind::Removed;
    auto const kind = static_cast<std::size_t>(difference.kind) ^ (isAlone && isExchanged ? 1U : 0U);
    return words[kind] + difference.path + L" " + difference.what + L": " +
           (isExchanged ? difference.after : difference.before) + L" -> " +
           (isExchanged ? difference.before : difference.after);
}

Lines LinesOf(std::vector<Difference> const& differences, bool isExchanged = false) {
    Lines lines;
    for (Difference const& difference : differences) {
        lines.push_back(Line(difference, isExchanged));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// What a place is, put together without anything of what is tested.
struct Facts {
    std::wstring parent;
    std::map<std::wstring, std::wstring> values; ///< "" is the value, all else a flag
};

std::wstring FlagText(bool flag) { return flag ? L"true" : L"false"; }

/// The paths of further profiles of a name begin with blanks, which no other path does.
void Collect(ParameterNode at, std::wstring const& path, std::wstring const& parent,
             std::map<std::wstring, Facts>& all) {
    LayoutNode const& layout = *at.m_pNode;
    std::wstring const prefix = path + (path.find_first_not_of(L' ') == path.npos ? L"" : L"_");
    auto& values = all.emplace(path, Facts{parent, {}}).first->second.values;
    values = {{L"ReadOnly", FlagText(at.GetReadOnly())}, {L"Hidden", FlagText(at.GetHidden())}};
    if (layout.m_isList || layout.m_isProfileList) {
        values[L"DisableAddRemove"] = FlagText(at.GetDisableAddRemove());
    }
    if (layout.m_isProfileList && !at.m_isContainer) {
        values[L"NameReadOnly"] = FlagText(at.GetNameReadOnly());
        values[L"CanBeDeleted"] = FlagText(at.GetCanBeDeleted());
        values[L"UserDefaultProfile"] = FlagText(at.GetUserDefaultProfile());
    }
    if (!at.m_isContainer) {
        auto const* const file = at.FindValue<KelAM::FileContent>();
        values[L""] = file == nullptr ? TextOf(at) : file->m_name;
        for (std::size_t i = 0; file != nullptr && i < file->m_data.size(); ++i) {
            values[L""] += static_cast<wchar_t>(file->m_data[i]);
        }
        for (std::size_t i = 0; layout.m_type == Group && i < layout.Size(); ++i) {
            Collect(at.Get(&layout.At(i)), prefix + layout.At(i).m_name, path, all);
        }
        return;
    }
    Collect(at.GetDefault(), prefix + layout.m_nodeName + L"::Default::", path, all);
    for (std::size_t i = 0; !layout.m_isProfileList && i < at.GetSize(); ++i) {
        Collect(at.GetListNode(i), prefix + layout.m_nodeName + L"[" + std::to_wstring(i) + L"]", path, all);
    }
    for (auto const [name, property] : *at.m_pProperties) {
        auto* const bag = PropertyCast<PersistentProperties>(property);
        if (layout.m_isProfileList && bag != nullptr && name != L"::DefaultProfile::") {
            std::wstring step = prefix + layout.m_nodeName + L"[" + std::wstring(name) + L"]";
            while (all.count(step) != 0) {
                step = L" " + step;
            }
            ParameterNode profile;
            profile.m_pNode = &layout;
            profile.m_pProperties = &bag->m_value;
            Collect(profile, step, path, all);
        }
    }
}

Lines NaiveLines(ParameterDatabase first, ParameterDatabase second) {
    std::map<std::wstring, Facts> before, after;
    Collect(first.GetProfileEditor(), L"", L"", before);
    Collect(second.GetProfileEditor(), L"", L"", after);
    Lines lines;
    for (auto const& [key, facts] : after) {
        std::wstring const path = key.empty() ? key : key.substr(key.find_first_not_of(L' '));
        if (before.count(key) == 0) {
            if (before.count(facts.parent) != 0) {
                lines.push_back(L"added " + path + L" ");
            }
            continue;
        }
        for (auto const& [what, value] : facts.values) {
            if (before[key].values[what] != value) {
                lines.push_back((what.empty() ? L"value " : L"flag ") + path + L" " + what);
            }
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// Changes here and there; nothing is taken away.
void Edit(ParameterDatabase& database, Generator& random) {
    for (PlaceWalk walk(database); walk.Next();) {
        ParameterNode at = walk.GetPlace().GetCursor();
        if (random.Chance(8)) {
            at.SetHidden(!at.GetHidden());
        }
        if (walk.GetPlace().GetKind() == PlaceKind::List && random.Chance(3)) {
            at.AddListNode(true);
        } else if (walk.GetPlace().GetKind() == PlaceKind::ProfileList && random.Chance(3)) {
            at.AddProfile(L"\x65E5 new", true).SetUserDefaultProfile(true);
        } else if (walk.GetPlace().IsLeaf() && random.Chance(4)) {
            random.FillContent(at);
        }
    }
}

/// So that numbers are equal exactly where their texts are.
void Settle(ParameterDatabase& database) {
    for (PlaceWalk walk(database); walk.Next();) {
        ParameterNode at = walk.GetPlace().GetCursor();
        if (auto const* const number = at.FindValue<double>(); number != nullptr) {
            at.SetValue(*number == *number ? *number + 0.0 : 1.5);
        }
    }
}

TEST(DifferencesTest, AreThoseOfANaiveComparison) {
    std::size_t found = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Generator random(seed);
        auto const layout = random.MakeLayout();
        ParameterDatabase first(layout.get());
        random.FillContent(first.GetProfileEditor());
        Settle(first);
        ParameterDatabase second = first;
        Edit(second, random);
        Settle(second);
        std::vector<Difference> const differences = Differences(first, second);
        Lines lines;
        for (Difference const& difference : differences) {
            std::wstring const line = Line(difference);
            lines.push_back(
                line.substr(0, line.find(L": ", line.find(difference.path) + difference.path.size())));
        }
        std::sort(lines.begin(), lines.end());
        ASSERT_EQ(lines, NaiveLines(first, second)) << seed;
        ASSERT_EQ(LinesOf(differences), LinesOf(Differences(second, first), true)) << seed;
        // Without flags that were set to false, nothing differs exactly where all is equal.
        ParameterDatabase const firstPlain = Migrate(first, *layout).database;
        ParameterDatabase const secondPlain = Migrate(second, *layout).database;
        ASSERT_TRUE(Differences(first, firstPlain).empty()) << seed;
        ASSERT_EQ(differences.empty(), firstPlain.IsEqual(secondPlain)) << seed;
        found += differences.size();
    }
    EXPECT_GT(found, 500U);
}

TEST(DifferencesTest, MatchEntriesByNameTurnAndPlaceAlsoAcrossLayouts) {
    ParameterLayout old, fresh;
    for (ParameterLayout* const layout : {&old, &fresh}) {
        LayoutNode* const materials = layout->m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"P");
        materials->AddNode(L"Power", Double, 1.0);
        layout->m_profileEditor->AddNode(L"Passes", Int, std::int32_t{1})->SetList(true, L"Pass", L"");
    }
    old.m_profileEditor->AddNode(L"Gone")->AddNode(L"Inner", Bool, true);
    old.m_profileEditor->AddNode(L"Kind", String, L"7");
    old.m_profileEditor->AddNode(L"Form", String, L"");
    fresh.m_profileEditor->AddNode(L"Kind", Int, std::int32_t{7});
    fresh.m_profileEditor->AddNode(L"Form", String, L"")->SetList(true, L"Item", L"");
    fresh.m_profileEditor->AddNode(L"Extra", Double, 2.5);

    ParameterDatabase first(&old), second(&fresh);
    auto const add = [](ParameterDatabase& database, wchar_t const* name, double power) {
        database.GetProfileEditor().Get(L"Materials").AddProfile(name, true).Get(L"Power").SetValue(power);
    };
    add(first, L"a", 1.0), add(first, L"b", 2.0), add(first, L"b", 3.0), add(first, L"d", 4.0);
    add(second, L"b", 2.0), add(second, L"b", 3.5), add(second, L"c", 5.0), add(second, L"d", 4.0);
    first.GetProfileEditor().Get(L"Passes").AddListNode(true);
    first.GetProfileEditor().Get(L"Passes").AddListNode(true).SetReadOnly(true);
    second.GetProfileEditor().Get(L"Passes").AddListNode(true).SetHidden(false);
    second.GetProfileEditor().Get(L"Passes").GetDefault().SetValue(std::int32_t{9});

    Lines lines;
    for (Difference const& difference : Differences(first, second)) {
        lines.push_back(Line(difference));
    }
    EXPECT_EQ(lines, (Lines{L"removed Materials_P[a] :  -> ", L"value Materials_P[b]_Power : 3 -> 3.5",
                            L"added Materials_P[c] :  -> ", L"value Passes_Pass::Default:: : 1 -> 9",
                            L"removed Passes_Pass[1] : 1 -> ", L"removed Gone :  -> ", L"removed Form :  -> ",
                            L"added Form :  -> ", L"added Extra :  -> 2.5"}));
    EXPECT_EQ(Differences(ParameterDatabase(nullptr), second).size(), 1U);
}

} // namespace
