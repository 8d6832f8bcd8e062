// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/parameter_layout.h>

#include "tests/layout_files/layout_formats.h"

namespace Zantrel {
namespace {

using TestSupport::Outline;

using Nodes = std::vector<LayoutNode const*>;

struct CategorisedLayout : ParameterLayout {
    explicit CategorisedLayout(bool withGeneric = false) { _InitCategoryLevel(withGeneric); }
};

TEST(ParameterLayout, WithoutOneProfileListOrWithAnOptionOfTheHostThereIsNoCategoryOption) {
    ParameterLayout layout;
    for (bool const isOnlyOne : {false, true, false}) {
        EXPECT_EQ(layout.FindCategoryNode(), isOnlyOne ? layout.m_profileEditor->Back() : nullptr);
        if (isOnlyOne) {
            layout.m_platformOptions->AddNode(L"Own", OptionsFromProfiles, L"")->SetProfileName(L"List");
        }
        layout.AddCategoryNodeIfNeeded();
        EXPECT_EQ(layout.m_categoryOption.GetNode(), nullptr);
        layout.m_profileEditor->AddNode(L"List")->SetProfile(true, L"Profile");
    }
    EXPECT_EQ(Outline(*layout.m_platformOptions), "PlatformOptions{Own:Profiles(from=List)}");
}

TEST(ParameterLayout, TheCategoryOptionComesFirstAndOnce) {
    CategorisedLayout layout(true);
    EXPECT_EQ(Outline(*layout.m_profileEditor), "ProfileEditor{GenericParameters Categories<Category>*}");
    EXPECT_EQ(layout.m_genericParameters.GetNode(), layout.m_profileEditor->GetNode(L"GenericParameters"));
    layout.m_categories->SetDisplayName(L"Shown");
    layout.m_platformOptions->AddNode(L"Other")->SetProfileName(L"Categories");
    layout.AddCategoryNodeIfNeeded();
    layout.AddCategoryNodeIfNeeded();
    EXPECT_EQ(Outline(*layout.m_platformOptions),
              "PlatformOptions{Category:Profiles(property=BuildProcessor.ProfileCategory shown=Shown "
              "from=Categories) Other(from=Categories)}");
    EXPECT_EQ(layout.m_categoryOption.GetNode(), &layout.m_platformOptions->At(0));
}

TEST(ParameterLayout, TicketNodesAreTheDirectOptionsOfTheAnchorsThatAHostLeftAndTheirPropertiesCountOnce) {
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
    std::set<std::wstring> names{L"before"};
    part->SetPropName(L"shared");
    over->SetPropName(L"shared");
    layout.GetUsedPropertyNames(names);
    EXPECT_EQ(names, std::set<std::wstring>{L"shared"});
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

TEST(ParameterLayout, TheAnchorsOfACopyStayInItsSource) {
    ParameterLayout source;
    ParameterLayout const copy(source);
    ParameterLayout assigned;
    assigned = copy;
    source = static_cast<ParameterLayout const&>(source);
    for (ParameterLayout const* const layout :
         std::initializer_list<ParameterLayout const*>{&copy, &assigned, &source}) {
        EXPECT_EQ(Outline(*layout), Outline(source));
        EXPECT_EQ(layout->m_profileEditor.GetNode(), source.GetNode(L"ProfileEditor"));
        EXPECT_EQ(layout->m_versionNode->GetQueryName(source), L"Version_Minor");
        EXPECT_EQ(layout->m_jobConfigurator.GetNode(), nullptr);
    }
}

} // namespace
} // namespace Zantrel
