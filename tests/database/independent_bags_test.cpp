// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/generic_parameter_file.h>

#include "tests/database/test_layout.h"
#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

#include <memory>

// What may be deeper than any stack, and what may outlive the layout that it was made from.

namespace Zantrel {

namespace {

using Bag = PersistentProperties;
using Bags = IndexedProperties<Bag>;

void FillContainers(ParameterNode const& editor) {
    for (bool const copyDefault : {false, true}) {
        editor.Get(L"Machines").AddProfile(L"another profile", copyDefault);
        editor.Get(L"Ranges").AddListNode(copyDefault);
    }
}

TEST(HostsBag, KeepsItsNamesWhenDatabaseAndLayoutAreGone) {
    void (*const ways[])(ParameterNode const& editor, Bag& target) = {
        [](ParameterNode const& editor, Bag& target) { target = *editor.m_pProperties; },
        [](ParameterNode const& editor, Bag& target) { target.Merge(*editor.m_pProperties, true); },
        [](ParameterNode const& editor, Bag& target) { target = Bag(*editor.m_pProperties); },
        [](ParameterNode const& editor, Bag& target) {
            ParameterNode formatted;
            formatted.m_pNode = editor.m_pNode;
            formatted.m_pParentProperties = &target;
            formatted.Format();
            FillContainers(formatted);
        },
        [](ParameterNode const& editor, Bag& target) {
            Bags& items = *editor.Get(L"Ranges").m_pProperties->GetValuePointer<Bags>(L"Value", false);
            Bags& taken = *target.GetValuePointer<Bags>(L"taken", true);
            taken.AddProperty().SetValue<std::wstring>(L"a name of the host's own", L"");
            taken.Swap(items);
            EXPECT_EQ(Shape(items.GetProperty(0)), L"a name of the host's own");
        },
    };
    for (auto const& way : ways) {
        SCOPED_TRACE(&way - ways);
        auto layout = std::make_unique<TestLayout>();
        Bag bag;
        std::wstring shape;
        {
            ParameterDatabase database(layout.get());
            ParameterNode const editor = database.GetProfileEditor();
            FillContainers(editor);
            std::wstring const item = Shape(*editor.Get(L"Ranges").GetListNode(3).m_pProperties);
            way(editor, bag);
            shape = Shape(bag);
            EXPECT_NE(shape.find(L"[" + item + L"]"), std::wstring::npos) << shape;
        }
        for (LayoutNode* node : {layout->ranges, layout->begin, layout->step, layout->speed}) {
            node->SetName(L"no longer there");
        }
        EXPECT_EQ(Shape(bag), shape);
        layout.reset();
        EXPECT_EQ(Shape(Bag(bag)), shape);
    }
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
