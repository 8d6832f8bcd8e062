// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/editing/editing.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/parameter_files/parameter_file_validity.h>
#include <zantrel/parameter_files/value_edit.h>
#include <zantrel/sample/sample_database.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

using namespace Zantrel;
using namespace Zantrel::Editing;
using namespace TestSupport;

namespace {

/// What the operations are done with; none of them changes it.
struct Subjects {
    Subjects() {
        EXPECT_TRUE(ReadText(database, SmallFile));
        database.GetProfileEditor().Get(L"C").SetDisableAddRemove(false);
        EXPECT_TRUE(AddProfile(Place(database).Get(L"C"), L"own"));
        std::ofstream(path, std::ios::binary) << SmallFile;
        bag = *database.GetProfileEditor().m_pProperties;
        ticket.GetDefaults().SetValue<std::wstring>(L"BasicProcessor.ProfileExport", L"Fine");
        ticket.GetPartOverrides().GetProperties(part, true)->SetValue<double>(L"Zone", 0.1);
    }
    ~Subjects() { std::filesystem::remove(path); }

    std::string const path =
        testing::UnitTest::GetInstance()->current_test_info()->name() + std::string("Memory.xml");
    SmallLayout const layout;
    ParameterDatabase database{&layout};
    PersistentProperties bag;
    EditingTests::Made const made = EditingTests::Make(3), other = EditingTests::Make(5);
    Sample::ParameterLayout const sample;
    BuildTicket ticket{&sample};
    KelAM::ExternalPropertyID const part{L"5b1c9c5e-2f0d-4e0e-9d8a-2d6a8e6c1f01"};
};

/// Makes a change to a copy, which is as it was where there is no memory for it.
template <class Change> void ToCopy(Subjects const& with, Change change) {
    ParameterDatabase copy(with.database);
    try {
        change(copy);
    } catch (std::bad_alloc const&) {
        EXPECT_TRUE(copy.IsEqual(with.database));
        throw;
    }
}

using Check = bool (*)(ParameterLayout const&, std::istream&, ParameterFileValidityOptions const&,
                       ParameterFileValidityResult*, ReadReport*);
void CheckText(Check check, ParameterLayout const& layout, char const* document) {
    std::istringstream in(document);
    ParameterFileValidityResult result;
    ReadReport report;
    check(layout, in, {}, &result, &report);
}

Place In(ParameterDatabase& database, wchar_t const* path) {
    return Place::Find(database, path).value(); // found, or there was no memory
}

struct Operation {
    char const* name;
    void (*run)(Subjects const& with);
};

Operation const Operations[] = {
    {"ReadsAFilter",
     [](Subjects const&) {
         std::istringstream in("<F><ExportDefaultParameters>no</ExportDefaultParameters><U a='b'/></F>");
         ParameterDatabaseIOFiltering filtering;
         ParameterDatabaseIOFilteringReader reader(&filtering);
         ReadReport report;
         KelAM::SaxUtilities::ReadStream(in, reader, &report);
     }},
    {"ChecksParameters",
     [](Subjects const& with) {
         CheckText(IsValidParameterStream, with.layout, SmallFile);
         CheckText(IsValidParameterStream, with.layout, "<Root><U/><G><I>x</I><V/></G><M><Item/></M></Root>");
     }},
    {"ChecksMachineParameters",
     [](Subjects const& with) {
         CheckText(KlvrProperties::IsValidParameterStream, with.layout,
                   "<Root><Property Name='G'><Property Name='I'>x</Property><U/></Property></Root>");
     }},
    {"FindsPlacesInAFile",
     [](Subjects const& with) {
         FindValuePlaces(with.layout, WidePath(with.path), {L"G_S", L"M_Item[0]_I"});
     }},
    {"CopiesLayouts",
     [](Subjects const& with) {
         ParameterLayout copy(*with.made.layout), assigned;
         assigned = copy;
         assigned.AddCategoryNodeIfNeeded();
     }},
    {"CopiesDatabases",
     [](Subjects const& with) {
         ParameterDatabase copy(with.database), assigned(nullptr);
         assigned = copy;
         ParameterDatabase moved(std::move(copy));
         moved.Format();
     }},
    {"CopiesTickets",
     [](Subjects const& with) {
         BuildTicket copy(with.ticket), assigned(nullptr);
         assigned = copy;
         assigned.ConvertFromInternalBuildTicket(copy.GetPartOverrides());
     }},
    {"WritesTheBinaryForm",
     [](Subjects const& with) {
         PersistentProperty<PersistentProperties> back;
         MFile file;
         PersistentProperty<PersistentProperties>(with.bag).Write(file);
         back.Read(file);
     }},
    {"MakesTheSample",
     [](Subjects const&) {
         Sample::ParameterLayout const layout;
         Sample::ParameterDatabase(&layout).PopulateDefault();
     }},
    {"MakesAnIndex",
     [](Subjects const& with) {
         ParameterDatabase copy(with.database);
         ParameterNode const editor = copy.GetProfileEditor();
         ContentList list;
         editor.CreateContentList(list);
         ContentList const another(list);
         EXPECT_TRUE(editor.Query(L"C_Profile[p & q]_I").IsValid() && another.m_nodes.contains(L"G_I"));
     }},
    {"Walks",
     [](Subjects const& with) {
         for (Walk walk(with.database.GetProfileEditor()); walk.Next();) {
             walk.Path();
         }
     }},
    {"FindsDifferences", [](Subjects const& with) { Differences(with.made.database, with.other.database); }},
    {"FindsDifferencesOfLayouts",
     [](Subjects const& with) { LayoutDifferences(*with.made.layout, *with.other.layout); }},
    {"Lints", [](Subjects const& with) { Lint(*with.made.layout); }},
    {"Validates", [](Subjects const& with) { Validate(with.made.database); }},
    {"LooksAndOffersChoices",
     [](Subjects const& with) {
         for (LookWalk walk(with.made.database); walk.Next();) {
             PlaceView const& place = walk.GetPlace();
             if (place.IsLeaf() && place.GetLayoutNode()->m_type == OptionsFromProfiles) {
                 ChoicesOf(place);
             }
             if (walk.GetLook().reasons.size() == 1) {
                 SentenceOf(walk.GetLook().reasons.back(), place);
             }
         }
     }},
    {"Objects",
     [](Subjects const& with) {
         for (wchar_t const* const text : {L"a", L"99"}) {
             Objections(PlaceView(with.database).Get(L"G").Get(L"I"), text);
         }
     }},
    {"Migrates",
     [](Subjects const& with) {
         Migrate(with.database, with.layout, {{L"G/S", L"G/O"}});
     }},
    {"MigratesToNothingAlike", [](Subjects const& with) { Migrate(with.database, with.sample); }},
    {"FindsEffectiveValues",
     [](Subjects const& with) {
         EffectiveValues(with.ticket, with.part.FormatGuid(true, true), with.sample);
     }},
    {"WritesASchema",
     [](Subjects const& with) {
         std::ostringstream out;
         WriteReport report;
         WriteSchema(with.layout, out, &report);
     }},
    {"SetsTexts",
     [](Subjects const& with) {
         for (wchar_t const* const path : {L"G_S", L"G_X"}) {
             ToCopy(with, [&](ParameterDatabase& copy) {
                 EXPECT_FALSE(SetText(In(copy, path), L"a text that takes memory of its own"));
             });
         }
     }},
    {"ChangesProfiles",
     [](Subjects const& with) {
         for (auto const change : {+[](Place const& list) { return AddProfile(list, L"another name"); },
                                   +[](Place const& list) { return DuplicateProfile(list, L"own", L"new"); },
                                   +[](Place const& list) { return RenameProfile(list, L"own", L"new"); },
                                   +[](Place const& list) { return RemoveProfile(list, L"own"); }}) {
             ToCopy(with, [&](ParameterDatabase& copy) { EXPECT_TRUE(change(In(copy, L"C"))); });
         }
     }},
    {"ChangesItems",
     [](Subjects const& with) {
         for (auto const change :
              {+[](Place const& list) { return AddItem(list); },
               +[](Place const& list) { return RemoveItem(list, 0); },
               +[](Place const& list) { return MoveItem(list, 0, 1); }}) { // which isn't allowed here
             ToCopy(with, [&](ParameterDatabase& copy) { change(In(copy, L"AS")); });
         }
     }},
    {"RefusesTexts",
     [](Subjects const& with) {
         ToCopy(with, [](ParameterDatabase& copy) { EXPECT_TRUE(SetText(In(copy, L"G_I"), L"x")); });
     }},
};

using Times = AllocationFailure::Times;

class EachOperation : public testing::TestWithParam<std::tuple<Operation, Times>> {};

std::string NameOf(testing::TestParamInfo<std::tuple<Operation, Times>> const& info) {
    auto const& [operation, times] = info.param;
    return operation.name + std::string(times == Times::Once ? "Once" : "FromThenOn");
}
INSTANTIATE_TEST_SUITE_P(, EachOperation,
                         testing::Combine(testing::ValuesIn(Operations),
                                          testing::Values(Times::Once, Times::FromThenOn)),
                         NameOf);

} // namespace

TEST_P(EachOperation, WithoutMemoryLeavesNothingBehind) {
    Subjects const with;
    Operation const& operation = std::get<Operation>(GetParam());
    EXPECT_GT(FailEachAllocation([&] { operation.run(with); }, std::get<Times>(GetParam())), 0u);
}
