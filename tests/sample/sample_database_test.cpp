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

TEST(SampleDatabase, PopulatingFillsTheStagesAndAddsCategoriesAtAnyLevel) {
    for (int const level : {-1, 0, 1, 2}) {
        SCOPED_TRACE(level);
        Sample::ParameterLayout const layout(level);
        Zantrel::ParameterDatabase untouched(&layout);
        Sample::ParameterDatabase database(&layout);
        EXPECT_TRUE(database.IsEqual(untouched));
        database.PopulateDefault();
        ParameterNode const category = CategoriesOf(database).GetDefault();
        for (wchar_t const* stage : {_Preslicing, _Slicing, _Export}) {
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

TEST(SampleDatabase, PopulatingChoosesTheProfilesThatItAdds) {
    Sample::ParameterLayout const layout;
    Sample::ParameterDatabase database(&layout);
    ParameterNode const choices = CategoriesOf(database).GetDefault().Get(_General).Get(_DefaultProfiles);
    auto const names = {_DefaultProfilePreSlicing, _DefaultProfileSlicing, _DefaultProfileExport};
    for (wchar_t const* name : names) {
        choices.Get(name).SetValueFromText(L"Other");
    }
    database.PopulateDefault();
    for (wchar_t const* name : names) {
        EXPECT_EQ(choices.Get(name).GetValue<std::wstring>(), L"Default");
    }
}

TEST(SampleDatabase, PopulatingTwiceAddsEverythingOnceMoreBehindTheFirst) {
    Sample::ParameterLayout const layout;
    Sample::ParameterDatabase database(&layout);
    database.PopulateDefault();
    database.PopulateDefault();
    ParameterNode const categories = CategoriesOf(database);
    ParameterNode const exports = categories.GetDefault().Get(_Export);
    EXPECT_THAT(RangesOf(exports.GetDefault()), ElementsAre(Pair(0, 1), Pair(1, 2), Pair(0, 0), Pair(0, 0)));
    EXPECT_THAT(ProfilesOf(exports), ElementsAre(L"Default", L"Default"));
    EXPECT_EQ(RangesOf(exports.GetProfile(L"Default")).size(), 2u);
    EXPECT_THAT(ProfilesOf(categories), ElementsAre(L"Category Advanced", L"Category Advanced",
                                                    L"Default Category", L"Default Category"));
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
