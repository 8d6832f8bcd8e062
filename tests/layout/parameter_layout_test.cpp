// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/parameter_layout.h>

#include "tests/support/failing_allocator.h"

namespace Zantrel {
namespace {

using Nodes = std::vector<LayoutNode const*>;

struct CategorisedLayout : ParameterLayout {
    explicit CategorisedLayout(bool withGeneric = false) { _InitCategoryLevel(withGeneric); }
};

std::wstring Outline(LayoutNode const& node) {
    std::wstring text = node.m_name;
    for (LayoutNode const* const child : node.m_children) {
        text += (child == &node.At(0) ? L"(" : L" ") + Outline(*child);
    }
    return text + (node.Size() != 0 ? L")" : L"");
}

TEST(ParameterLayout, ANewLayoutHasTheNodesOfEveryLayout) {
    ParameterLayout const layout;
    EXPECT_EQ(Outline(layout), L"SomeRootname(Version(Major Minor) ProfileEditor "
                               L"PlatformConfigurator(PlatformOptions PartOptions) PartConfigurator)");
    EXPECT_EQ(layout.m_versionNode->GetQueryName(layout), L"Version_Minor");
    EXPECT_EQ(layout.m_versionNode->Parent()->At(0).m_defaultValue, L"1");
    EXPECT_EQ(layout.m_profileEditor.GetNode(), layout.GetNode(L"ProfileEditor"));
    EXPECT_EQ(layout.m_platformOptions.GetNode(), &layout.m_platformConfigurator->At(0));
    EXPECT_EQ(layout.m_partOptions.GetNode(), &layout.m_platformConfigurator->At(1));
    EXPECT_EQ(layout.m_partConfigurator.GetNode(), layout.GetNode(L"PartConfigurator"));
    EXPECT_EQ(layout.m_jobConfigurator.GetNode(), nullptr);
}

TEST(ParameterLayout, WithoutOneProfileListThereIsNoCategoryOption) {
    ParameterLayout layout;
    for (bool const isOnlyOne : {false, true, false}) {
        EXPECT_EQ(layout.FindCategoryNode(), isOnlyOne ? layout.m_profileEditor->Back() : nullptr);
        if (!isOnlyOne) {
            layout.AddCategoryNodeIfNeeded();
        }
        layout.m_profileEditor->AddNode(L"List")->SetProfile(true, L"Profile");
    }
    EXPECT_EQ(layout.m_platformOptions->Size(), 0U);
}

TEST(ParameterLayout, TheCategoryOptionComesFirstAndOnce) {
    CategorisedLayout layout(true);
    EXPECT_EQ(Outline(*layout.m_profileEditor), L"ProfileEditor(GenericParameters Categories)");
    EXPECT_EQ(layout.m_genericParameters.GetNode(), layout.m_profileEditor->GetNode(L"GenericParameters"));
    EXPECT_EQ(layout.m_categories->GetNodeName(), L"Category");
    EXPECT_TRUE(layout.m_categories->GetIsCategoryList());
    layout.m_categories->SetDisplayName(L"Shown");
    layout.m_platformOptions->AddNode(L"Other")->SetProfileName(L"Categories");
    layout.AddCategoryNodeIfNeeded();
    layout.AddCategoryNodeIfNeeded();
    EXPECT_EQ(Outline(*layout.m_platformOptions), L"PlatformOptions(Category Other)");
    LayoutNode& option = layout.m_platformOptions->At(0);
    EXPECT_EQ(layout.m_categoryOption.GetNode(), &option);
    EXPECT_EQ(option.GetType(), OptionsFromProfiles);
    EXPECT_EQ(option.GetProfileName() + L' ' + option.GetPropName() + L' ' + option.GetDisplayName(),
              L"Categories BuildProcessor.ProfileCategory Shown");
}

TEST(ParameterLayout, AnOptionOfTheHostTakesThePlaceOfTheCategoryOption) {
    CategorisedLayout layout;
    layout.m_platformOptions->AddNode(L"Own", OptionsFromProfiles, L"")->SetProfileName(L"Categories");
    layout.AddCategoryNodeIfNeeded();
    EXPECT_EQ(Outline(*layout.m_platformOptions), L"PlatformOptions(Own)");
    EXPECT_EQ(layout.m_categoryOption.GetNode(), nullptr);
}

TEST(ParameterLayout, TicketNodesAreTheDirectOptionsOfTheAnchorsThatAHostLeft) {
    CategorisedLayout layout;
    LayoutNode* const part = layout.m_partOptions->AddNode(L"part");
    LayoutNode* const platform = layout.m_platformOptions->AddNode(L"platform");
    LayoutNode* const over = layout.m_partConfigurator->AddNode(L"over");
    platform->AddNode(L"below");
    Nodes nodes{nullptr};
    layout.GetBuildTicketNodes(nodes);
    EXPECT_EQ(nodes, (Nodes{platform, part}));
    layout.GetBuildTicketNodesPartOverrides(nodes);
    EXPECT_EQ(nodes, Nodes{over});
    layout.m_profileEditor = layout.m_platformOptions = nullptr;
    layout.AddCategoryNodeIfNeeded();
    layout.GetBuildTicketNodes(nodes);
    EXPECT_EQ(nodes, Nodes{part});
    EXPECT_FALSE(layout.GetReferredNodes(&layout, nodes));
}

TEST(ParameterLayout, ReferredNodesGoFromTheOuterListToTheNamedOne) {
    CategorisedLayout layout;
    LayoutNode* const list =
        layout.m_categories->AddNode(L"group")->AddNode(L"Slicing")->SetProfile(true, L"Profile");
    LayoutNode choice(L"choice", OptionsFromProfiles, nullptr);
    Nodes nodes;
    EXPECT_TRUE(layout.GetReferredNodes(choice.SetProfileName(L"Slicing"), nodes));
    EXPECT_EQ(nodes, (Nodes{layout.m_categories.GetNode(), list}));
    choice.SetTypeFromProfiles(list);
    EXPECT_FALSE(layout.GetReferredNodes(choice.SetProfileName(L"none"), nodes)) << "only the name counts";
    EXPECT_TRUE(nodes.empty());
    EXPECT_FALSE(layout.GetReferredNodes(nullptr, nodes));
}

TEST(ParameterLayout, UsedPropertyNamesComeFromTheWholeTreeOnceEach) {
    ParameterLayout layout;
    layout.SetPropName(L"root");
    layout.m_profileEditor->AddNode(L"a")->SetPropName(L"shared")->AddNode(L"b")->SetPropName(L"deep");
    layout.m_partOptions->AddNode(L"c")->SetPropName(L"shared");
    std::set<std::wstring> names{L"before"};
    layout.GetUsedPropertyNames(names);
    EXPECT_EQ(names, (std::set<std::wstring>{L"deep", L"root", L"shared"}));
}

TEST(ParameterLayout, TheAnchorsOfACopyStayInItsSource) {
    ParameterLayout source;
    ParameterLayout const copy(source), moved(std::move(source));
    ParameterLayout assigned;
    assigned = copy;
    source = static_cast<ParameterLayout const&>(source);
    for (ParameterLayout const* const layout :
         std::initializer_list<ParameterLayout const*>{&copy, &moved, &assigned, &source}) {
        EXPECT_EQ(Outline(*layout), Outline(source));
        EXPECT_EQ(layout->m_profileEditor.GetNode(), source.GetNode(L"ProfileEditor"));
    }
}

TEST(ParameterLayout, AFailedAllocationLeaksNothing) {
    TestSupport::FailEachAllocation([] {
        CategorisedLayout layout(true);
        layout.AddCategoryNodeIfNeeded();
        ParameterLayout copy(layout);
        copy = layout;
    });
}

} // namespace
} // namespace Zantrel
