// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_database.h>

#include <zantrel/sample/sample_names.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zantrel;
using namespace Zantrel::Sample;
using testing::ElementsAre;
using testing::Pair;

std::vector<std::wstring> ProfilesOf(ParameterNode const& list) {
    std::vector<std::wstring> names;
    list.GetProfiles(names);
    return names;
}

std::vector<std::pair<double, double>> RangesOf(ParameterNode const& exportProfile) {
    ParameterNode const ranges = exportProfile.Get(L"Ranges");
    std::vector<std::pair<double, double>> values;
    for (unsigned long long i = 0; i < ranges.GetSize(); ++i) {
        ParameterNode const range = ranges.GetListNode(i);
        values.emplace_back(range.Get(L"Begin").GetValue<double>(), range.Get(L"End").GetValue<double>());
    }
    return values;
}

ParameterNode CategoriesOf(Zantrel::ParameterDatabase& database) {
    return database.GetProfileEditor().Get(_Categories);
}

TEST(SampleDatabase, PopulatingFillsTheStagesAndChoosesWhatItAddsAtAnyLevel) {
    for (int const level : {-1, 0, 1, 2}) {
        SCOPED_TRACE(level);
        Sample::ParameterLayout const layout(level);
        Zantrel::ParameterDatabase untouched(&layout);
        Sample::ParameterDatabase database(&layout);
        EXPECT_TRUE(database.IsEqual(untouched));
        ParameterNode const category = CategoriesOf(database).GetDefault();
        std::pair<wchar_t const*, wchar_t const*> const stages[] = {{_Preslicing, _DefaultProfilePreSlicing},
                                                                    {_Slicing, _DefaultProfileSlicing},
                                                                    {_Export, _DefaultProfileExport}};
        auto const choice = [&](wchar_t const* name) {
            return category.Get(_General).Get(_DefaultProfiles).Get(name);
        };
        for (auto const& [stage, name] : stages) {
            choice(name).SetValueFromText(L"Other");
        }
        database.PopulateDefault();
        for (auto const& [stage, name] : stages) {
            EXPECT_EQ(choice(name).GetValue<std::wstring>(), L"Default");
            ParameterNode const list = category.Get(stage);
            EXPECT_THAT(ProfilesOf(list), ElementsAre(L"Default"));
            EXPECT_TRUE(list.GetProfile(L"Default").IsEqual(list.GetDefault()));
            ParameterNode const before = CategoriesOf(untouched).GetDefault().Get(stage).GetDefault();
            EXPECT_EQ(list.GetDefault().IsEqual(before), stage != _Export);
        }
        EXPECT_THAT(RangesOf(category.Get(_Export).GetDefault()), ElementsAre(Pair(0, 1), Pair(1, 2)));
        ParameterNode const categories = CategoriesOf(database);
        EXPECT_THAT(ProfilesOf(categories), ElementsAre(L"Category Advanced", L"Default Category"));
        for (std::wstring const& name : ProfilesOf(categories)) {
            EXPECT_TRUE(categories.GetProfile(name.c_str()).IsEqual(categories.GetDefault()));
        }
    }
}

TEST(SampleDatabase, PopulatingDoesNothingWithoutALayoutOfItsOwn) {
    Sample::ParameterLayout const layout;
    Sample::ParameterLayout const copy(layout);
    for (Sample::ParameterLayout const* unusable :
         {static_cast<Sample::ParameterLayout const*>(nullptr), &copy}) {
        Sample::ParameterDatabase database(unusable);
        database.PopulateDefault();
        EXPECT_TRUE(database.IsEqual(Zantrel::ParameterDatabase(unusable)));
        Zantrel::ParameterDatabase const other(&layout);
        static_cast<Zantrel::ParameterDatabase&>(database) = other;
        database.PopulateDefault();
        EXPECT_TRUE(database.IsEqual(other)) << "a layout that is not its own";
    }
}

} // namespace
