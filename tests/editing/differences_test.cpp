// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"

#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::Make;

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

/// A place, with what is compared of it: "" is the value, all else a flag.
struct Facts {
    std::wstring path, around;
    std::map<std::wstring, std::wstring> values;
};

Facts FactsOf(PlaceView const& place, std::wstring const& around) {
    ParameterView const at = place.GetCursor();
    LayoutNode const& layout = *place.GetLayoutNode();
    Facts facts{place.GetPath(), around, {}};
    auto const add = [&](wchar_t const* flag, bool isSet) {
        facts.values[flag] = isSet ? L"true" : L"false";
    };
    add(L"ReadOnly", at.GetReadOnly());
    add(L"Hidden", at.GetHidden());
    if (layout.m_isList || layout.m_isProfileList) {
        add(L"DisableAddRemove", at.GetDisableAddRemove());
    }
    if (layout.m_isProfileList && !at.IsContainer()) {
        add(L"NameReadOnly", at.GetNameReadOnly());
        add(L"CanBeDeleted", at.GetCanBeDeleted());
        add(L"UserDefaultProfile", at.GetUserDefaultProfile());
    }
    auto const* const file = at.FindValue<KelAM::FileContent>();
    std::wstring const text = at.IsContainer() ? L"" : TextOf(at);
    facts.values[L""] = file != nullptr ? text + std::to_wstring(file->m_data.size())
                        : text == L"-0" ? L"0"
                                        : text;
    return facts;
}

/// By keys that go on from those of the places around; the further profile of a name has blanks behind it.
void Collect(PlaceView const& top, std::wstring const& around, std::map<std::wstring, Facts>& all) {
    std::vector<std::wstring> keys;
    for (PlaceWalk walk(top); walk.Next();) {
        PlaceView const& place = walk.GetPlace();
        keys.resize(place.GetDepth() - top.GetDepth());
        std::wstring const outer = keys.empty() ? around : keys.back();
        std::wstring key = outer + L"|" + place.GetPath();
        while (all.count(key) != 0) {
            key += L' ';
        }
        all[key] = FactsOf(place, outer);
        keys.push_back(key);
        if (place.GetKind() == PlaceKind::List && place.GetDefaultProfile().IsValid()) {
            Collect(place.GetDefaultProfile(), key, all);
        }
    }
}

Lines NaiveLines(ParameterDatabase const& first, ParameterDatabase const& second) {
    std::map<std::wstring, Facts> before, after;
    Collect(PlaceView(first), L"", before);
    Collect(PlaceView(second), L"", after);
    Lines lines;
    for (auto const& [key, facts] : after) {
        if (before.count(key) == 0) {
            if (before.count(facts.around) != 0) {
                lines.push_back(L"added " + facts.path + L" ");
            }
            continue;
        }
        for (auto const& [what, value] : facts.values) {
            if (before[key].values[what] != value) {
                lines.push_back((what.empty() ? L"value " : L"flag ") + facts.path + L" " + what);
            }
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(DifferencesTest, AreThoseOfANaiveComparison) {
    std::size_t found = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        auto [generated, layout, first] = Make(seed, false);
        ParameterDatabase second = first;
        generated.Fill(second, 5);
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
