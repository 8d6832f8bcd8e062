// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_database.h>

#include <zantrel/sample/sample_names.h>

#include "tests/formats/formats.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Zantrel;
using namespace Zantrel::Sample;
using TestSupport::Dump;

/// A list of profiles that are all equal to its default one.
std::string DumpEqual(ParameterNode const& list, std::vector<std::string> const& names) {
    std::string const model = Dump(list.GetDefault());
    std::string text = '<' + model + ';';
    for (std::string const& name : names) {
        text += " '" + name + '\'' + model;
    }
    return text + '>';
}

TEST(SampleDatabase, PopulatingFillsTheStagesAndChoosesWhatItAddsAtAnyLevel) {
    for (int const level : {-1, 0, 1, 2}) {
        SCOPED_TRACE(level);
        Sample::ParameterLayout const layout(level);
        Sample::ParameterDatabase database(&layout);
        EXPECT_EQ(TestSupport::DumpChanges(database), "");
        ParameterNode const categories = database.GetProfileEditor().Get(_Categories);
        ParameterNode const category = categories.GetDefault();
        ParameterNode const choices = category.Get(_General).Get(_DefaultProfiles);
        for (LayoutNode const* const choice : choices.m_pNode->m_children) {
            choices.Get(choice).SetValueFromText(L"Other");
        }
        database.PopulateDefault();
        EXPECT_EQ(Dump(choices),
                  "{ProfilePreSlicing='Default' ProfileSlicing='Default' ProfileExport='Default'}");
        for (wchar_t const* const stage : {_Preslicing, _Slicing, _Export}) {
            EXPECT_EQ(Dump(category.Get(stage)), DumpEqual(category.Get(stage), {"Default"}));
        }
        EXPECT_EQ(Dump(category.Get(_Export).GetDefault()),
                  "{SliceThickness=0.20000000000000001 NumExports=100 "
                  "Ranges[{Begin=0 End=0}; {Begin=0 End=1} {Begin=1 End=2}]}");
        EXPECT_EQ(Dump(categories), DumpEqual(categories, {"Category Advanced", "Default Category"}));
        for (auto const* const io :
             {&TestSupport::GenericParameters, &TestSupport::MachineParameterFile<false>,
              &TestSupport::MachineParameterFile<true>}) {
            ReadReport report;
            Zantrel::ParameterDatabase back(&layout);
            std::istringstream in(TestSupport::WriteText(*io, database));
            EXPECT_TRUE(io->readStream(back, in, &report));
            // Machine parameters lose profiles, as their words aren't the names of the layout's entries.
            EXPECT_EQ(TestSupport::Reported(report).find("unknown"), std::string::npos);
            EXPECT_TRUE(io->hasFixedNames || report.m_entries.empty());
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
