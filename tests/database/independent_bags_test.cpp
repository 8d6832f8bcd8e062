// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/generic_parameter_file.h>

#include "tests/database/test_layout.h"
#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

#include <memory>

// What may be deeper than any stack, and what may outlive the layout that it was made from.

namespace Zantrel {

namespace {

/// Made and ended again, so that memory of the layout is used anew.
void MakeAnotherLayout() {
    TestLayout another;
    another.editor->AddNode(L"a name that nobody expects to find");
}

TEST(HostsBag, KeepsItsNamesWhenTheLayoutIsGone) {
    PersistentProperties bag;
    std::wstring before;
    {
        TestLayout layout;
        ParameterNode editor;
        editor.m_pNode = layout.editor;
        editor.m_pParentProperties = &bag;
        editor.Format();
        for (bool const copyDefault : {false, true}) {
            editor.Get(layout.machines).AddProfile(L"another profile", copyDefault);
            editor.Get(layout.ranges).AddListNode(copyDefault);
        }
        before = Shape(bag);
    }
    MakeAnotherLayout();
    EXPECT_EQ(Shape(bag), before);
    EXPECT_NE(before.find(L"another profile(Speed(Value))"), std::wstring::npos) << before;
}

TEST(HostsBag, KeepsTheItemsThatItTookFromADatabase) {
    IndexedProperties<PersistentProperties> items;
    std::wstring before;
    {
        TestDatabase database;
        ParameterNode const ranges = database.At(database.layout.ranges);
        ranges.AddListNode(false);
        auto& stored =
            *ranges.m_pProperties->GetValuePointer<IndexedProperties<PersistentProperties>>(L"Value", false);
        items.AddProperty().SetValue<std::wstring>(L"a name of the host's own", L"");
        items.Swap(stored);
        EXPECT_EQ(Shape(stored.GetProperty(0)), L"a name of the host's own");
        before = Shape(items.GetProperty(2));
    }
    MakeAnotherLayout();
    EXPECT_EQ(items.GetNumProperties(), 3u);
    EXPECT_EQ(Shape(items.GetProperty(2)), before);
    EXPECT_EQ(before.substr(0, 12), L"Begin(Value)");
}

TEST(DeepLayout, IsFormattedCopiedComparedRefusedByFilesAndEnded) {
    constexpr int Levels = 100000;
    ParameterLayout layout;
    LayoutNode* node = layout.m_profileEditor;
    for (int level = 0; level < Levels; ++level) {
        node = node->AddNode(L"G");
        if (level > 2000 && level % 1000 == 500) { // behind what files refuse
            node->SetList(true, L"Item", L"");
        }
    }
    node->AddNode(L"Leaf", Double, 1.5);
    ParameterDatabase database(&layout);
    ParameterDatabase copy(database);
    EXPECT_TRUE(copy.IsEqual(database));
    ParameterNode at = copy.GetProfileEditor();
    for (int level = 0; level <= Levels; ++level) {
        at = at.Get(&at.m_pNode->At(0));
        at = at.m_isContainer ? at.GetDefault() : at;
    }
    EXPECT_EQ(at.GetValue<double>(), 1.5);
    at.SetValue(2.5);
    EXPECT_FALSE(copy.IsEqual(database));
    WriteReport report;
    TemporaryFolder const folder;
    EXPECT_FALSE(WriteFile(database, (folder / "deep.xml").wstring(), L"", &report));
    EXPECT_EQ(report.m_sentence, L"The elements are nested too deep to be read again.");
}

} // namespace

} // namespace Zantrel
