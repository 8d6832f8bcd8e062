// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include "tests/support/failing_allocator.h"

#include <zantrel/layout_files/property_template.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace Zantrel {
namespace {

TEST(Formatting, GivesLeavesTheirDefaultsAndNestsTemplatesAndItemsWithinEachOther) {
    TestDatabase database;
    std::string const range = "{Begin=1.5 Steps[{Width=7}; {Width=7}]}";
    EXPECT_EQ(Dump(database.values),
              "{Parameters{Layer count=12 Power=0.10000000000000001 Thickness=0.050000000000000003 "
              "Supports=True Material=' steel ' Strategy='Fast' Scanner='Left' Path='a.txt' Attachment='': "
              "Gas=?} Ranges[" +
                  range + "; " + range + ' ' + range + "] Counts[=5;] Machines<{Speed=30};>}");
    std::wstring const leaves =
        L"Attachment(Value) Gas() Layer count(Value) Material(Value) Path(Value) "
        L"Power(Value) Scanner(Value) Strategy(Value) Supports(Value) Thickness(Value)";
    std::wstring const item = L"Begin(Value) Steps(::DefaultProfile::(Width(Value)) Value[Width(Value)])";
    EXPECT_EQ(
        Shape(*database.Editor().m_pProperties),
        L"Counts(::DefaultProfile::(Value) Value) Machines(::DefaultProfile::(Speed(Value))) Parameters(" +
            leaves + L") Ranges(::DefaultProfile::(" + item + L") Value[" + item + L"][" + item + L"])");
}

TEST(Formatting, DecidesWhatALayoutLeavesOpen) {
    struct {
        void (*build)(LayoutNode& editor);
        char const* values;
        wchar_t const* shape;
    } const rows[] = {
        {[](auto& at) { at.AddNode(L"O", Options, L"")->AddOption(L"1st", L"")->AddOption(L"2nd", L""); },
         "{O='1st'}", L"O(Value)"},
        {[](auto& at) { at.AddNode(L"O", Options, L"none of them")->AddOption(L"1st", L""); },
         "{O='none of them'}", L"O(Value)"},
        {[](auto& at) { at.AddNode(L"O", Options, L""); }, "{O=''}", L"O(Value)"},
        {[](auto& at) {
             at.AddNode(L"Both", Int, L"1")->SetIsList(true)->SetIsProfileList(true)->SetMultiplicity(3);
         },
         "{Both<=1;>}", L"Both(::DefaultProfile::(Value))"},
        {[](auto& at) { at.AddNode(L"No type", Int, L"1")->SetType(static_cast<eTypeLayoutNode>(11)); },
         "{No type{}}", L"No type()"},
        {[](auto& at) { // siblings of one name: the first bag is found
             for (wchar_t const* value : {L"1", L"2"}) {
                 at.AddNode(L"S", Int, value);
                 at.AddNode(L"Value", Int, value);
             }
         },
         "{S=1 Value=1 S=1 Value=1}", L"S(Value) S(Value) Value(Value) Value(Value)"},
    };
    for (auto const& row : rows) {
        ParameterLayout layout;
        row.build(*layout.m_profileEditor);
        ParameterDatabase database(&layout);
        EXPECT_EQ(Dump(database), row.values);
        EXPECT_EQ(Shape(*database.GetProfileEditor().m_pProperties), row.shape);
    }
}

TEST(Formatting, OfWhatIsThereResetsAValueAddsBehindTheChildrenOfAGroupAndHidesNothing) {
    TestDatabase database;
    ParameterNode real = database.At(database.layout.real), group = database.At(database.layout.group);
    real.SetValue(7.0);
    database.values.Format();
    EXPECT_EQ(database.values.GetRoot().m_pProperties->GetNumProperties(), 2u);
    for (int i = 0; i < 2; ++i) {
        OpenCursor(group)._FormatContent();
    }
    EXPECT_EQ(group.m_pProperties->GetNumProperties(), 30u);
    EXPECT_EQ(TestSupport::DumpChanges(database.values), "Parameters/Power=7");
    EXPECT_EQ(database.At(database.layout.real).m_pProperties, real.m_pProperties);
    OpenCursor(real)._FormatContent();
    EXPECT_EQ(TestSupport::DumpChanges(database.values), "");
    OpenCursor(ParameterNode())._FormatContent();
}

TEST(Database, WithoutALayoutOrOnACopiedOneHasNoEditor) {
    ParameterDatabase database(nullptr);
    database.Format();
    EXPECT_FALSE(database.GetProfileEditor().IsValid());
    EXPECT_TRUE(database.GetRoot().m_pProperties->IsEmpty());
    EXPECT_FALSE(database.GetRoot().Get(ParameterLayout().m_profileEditor.GetNode()).IsValid());
    EXPECT_TRUE(database.IsEqual(ParameterDatabase(nullptr)));

    TestLayout const source;
    ParameterLayout const copy(source);
    ParameterDatabase onCopy(&copy);
    EXPECT_FALSE(onCopy.GetProfileEditor().IsValid());
    EXPECT_TRUE(onCopy.GetRoot().m_pProperties->HasValue<PersistentProperties>(L"ProfileEditor"));
}

TEST(Database, RefusesACopiedLayoutWhoseSourceHasEndedAsItsOwnQuestionsDo) {
    auto source = std::make_unique<TestLayout const>();
    auto copy = std::make_unique<ParameterLayout>(*source);
    ParameterLayout const second(*copy);
    copy.reset();
    EXPECT_NO_THROW(ParameterDatabase{&second});
    ParameterLayout last;
    last = second;
    source.reset();
    std::vector<LayoutNode const*> nodes;
    EXPECT_THROW(ParameterDatabase{&second}, std::logic_error);
    EXPECT_THROW(last.AddCategoryNodeIfNeeded(), std::logic_error);
    EXPECT_THROW(last.GetBuildTicketNodes(nodes), std::logic_error);
    EXPECT_THROW(last.GetBuildTicketNodesPartOverrides(nodes), std::logic_error);
    EXPECT_THROW(last.GetReferredNodes(nullptr, nodes), std::logic_error);
    std::ostringstream out;
    EXPECT_THROW(KlvrPropertyTemplate::WriteStream(last, out, {}), std::logic_error);
}

TEST(Database, IsEqualToAnotherOnTheSameLayoutWithEqualValuesAsAfterACopyOrAnAssignment) {
    TestDatabase first, second;
    EXPECT_TRUE(first.Editor().IsEqual(second.Editor()));
    EXPECT_FALSE(first.values.IsEqual(second.values)); // another layout object
    ParameterDatabase copy(first.values);
    EXPECT_TRUE(copy.IsEqual(first.values));
    EXPECT_TRUE(ParameterNode().IsEqual(ParameterNode()) && !copy.GetRoot().IsEqual(ParameterNode()));
    copy.GetProfileEditor().SetHidden(false); // a flag that was set is content
    EXPECT_FALSE(copy.IsEqual(first.values));
    copy = first.values;
    copy.GetProfileEditor().Get(first.layout.real).SetValue(2.0);
    EXPECT_FALSE(copy.IsEqual(first.values));
    PersistentProperties* const root = second.values.GetRoot().m_pProperties;
    second.values = copy;
    second.values = static_cast<ParameterDatabase const&>(second.values);
    EXPECT_TRUE(second.values.IsEqual(copy));
    EXPECT_EQ(second.values.GetRoot().m_pProperties, root);
    EXPECT_EQ(TestSupport::DumpChanges(second.values), "Parameters/Power=2");
}

TEST(Database, IsMadeAndCopiedWholeOrNotAtAllWhereMemoryRunsOut) {
    TestDatabase database;
    database.Editor().m_pProperties->SetValue<std::wstring>(L"of the host", L"a value that takes memory");
    database.At(database.layout.machines).AddProfile(L"a name that takes memory", true);
    auto const make = [&] { EXPECT_TRUE(ParameterDatabase(&database.layout).GetProfileEditor().IsValid()); };
    auto const copy = [&] { EXPECT_TRUE(ParameterDatabase(database.values).IsEqual(database.values)); };
    EXPECT_GT(TestSupport::FailEachAllocation(make), 10u);
    EXPECT_GT(TestSupport::FailEachAllocation(copy), 10u);

    ParameterDatabase target(&database.layout);
    ParameterDatabase const before(target);
    auto const assign = [&] { target = database.values; };
    TestSupport::FailEachAllocation(assign, [&](std::size_t, bool completed) {
        EXPECT_TRUE(target.IsEqual(completed ? database.values : before));
    });
}

} // namespace
} // namespace Zantrel
