// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_layout.h>

#include <zantrel/platform/string_conversion.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

// A layout is compared as a text with one line a node: name, type, default, and every attribute that differs
// from those of a new node of its type. So a wrong, missing or superfluous row or setting shows as a
// difference of texts.

namespace {

using StringConversion::NativeToUtf8;
using Zantrel::LayoutNode;

constexpr char const* TypeWords[] = {"Group",        "Int",        "Double",         "Distance",
                                     "Bool",         "String",     "Options",        "Choice",
                                     "FileAbsolute", "Attachment", "StandardOptions"};

constexpr std::pair<char const*, std::wstring LayoutNode::*> Texts[] = {
    {"display", &LayoutNode::m_displayName},
    {"profiles of", &LayoutNode::m_profileName},
    {"property", &LayoutNode::m_propName},
    {"prefix", &LayoutNode::m_prefix},
    {"postfix", &LayoutNode::m_postfix},
    {"description", &LayoutNode::m_description},
    {"min", &LayoutNode::m_min},
    {"max", &LayoutNode::m_max},
    {"entry", &LayoutNode::m_nodeName},
    {"entry display", &LayoutNode::m_nodeDisplayName},
    {"filter", &LayoutNode::m_fileFilter},
    {"request", &LayoutNode::m_requestName}};

constexpr std::pair<char const*, bool LayoutNode::*> Flags[] = {
    {"expanded", &LayoutNode::m_expanded},
    {"read-only", &LayoutNode::m_readOnly},
    {"visible", &LayoutNode::m_visible},
    {"empty allowed", &LayoutNode::m_allowEmpty},
    {"list", &LayoutNode::m_isList},
    {"profile list", &LayoutNode::m_isProfileList},
    {"categories", &LayoutNode::m_isCategoryList},
    {"written", &LayoutNode::m_writeToParameterFile}};

std::string Outline(LayoutNode const& node, std::size_t depth = 0) {
    LayoutNode const plain(L"", node.m_type, nullptr);
    std::string text(2 * depth, ' ');
    text += NativeToUtf8(node.m_name) + ' ' + TypeWords[node.m_type];
    text += node.m_defaultValue.empty() ? "" : ' ' + NativeToUtf8(node.m_defaultValue);
    for (auto const& [word, field] : Texts) {
        text += node.*field == plain.*field ? "" : std::string("; ") + word + ' ' + NativeToUtf8(node.*field);
    }
    for (auto const& [word, flag] : Flags) {
        text += node.*flag == plain.*flag ? "" : std::string(node.*flag ? "; " : "; not ") + word;
    }
    for (std::size_t i = 0; i < node.m_optionValues.size(); ++i) {
        text += "; option " + NativeToUtf8(node.m_optionValues[i]) + '=' +
                NativeToUtf8(node.m_optionDisplayNames.at(i));
    }
    text += '\n';
    for (std::size_t i = 0; i < node.Size(); ++i) {
        text += Outline(node.At(i), depth + 1);
    }
    return text;
}

TEST(SampleLayout, CategoriesHoldTheProfileListsOfAllStages) {
    Zantrel::Sample::ParameterLayout const layout;
    EXPECT_EQ(Outline(*layout.m_categories.GetNode()),
              R"(Categories Group; entry Category; profile list; categories
  General Group; expanded
    DefaultProfiles Group; expanded
      ProfilePreSlicing Choice Default; display Preslicing Profile; profiles of PreSlicing
      ProfileSlicing Choice Default; display Slicing Profile; profiles of Slicing
      ProfileExport Choice Default; display Export Profile; profiles of Export
  PreSlicing Group; entry Profile; profile list
    Scaling Group
      X Double 1.0000; min -100.0000; max 100.0000
      Y Double 1.0000; min -100.0000; max 100.0000
      Z Double 1.0000; min -100.0000; max 100.0000
  Slicing Group; entry Profile; expanded; profile list
    SliceThickness Distance 0.1000
    Type Options Above; option Above=Above; option Symmetric=Symmetric; option Below=Below
    TypeEffective Options Middle; description Location of slice in physical machine; option Top=Top; option Middle=Middle; option Bottom=Bottom
    Options Group
      EdgesToVectors Bool False
      TrianglesToContours Bool True
      TrianglesToContoursMinimalWidth Double 0.0000; postfix SomeUnit
    Fixing Group; expanded
      GapFill Group; expanded
        Enabled Bool True
        MaxGapSize Double 0.1000; postfix mm
      Unify Group; expanded
        Enabled Bool True
        MergeGap Double 0.0000
      Filtering Group; expanded
        Enabled Bool False
        MinLengthOuterClosed Double 0.3000
        MinLengthInnerClosed Double 0.3000
        MinLengthOpen Double 0.0000
  Export Group; entry Profile; profile list
    SliceThickness Double 0.2000
    NumExports Int 100
    Ranges Group; entry Range; list
      Begin Double 0.0000
      End Double 0.0000
)");
}

TEST(SampleLayout, PlatformAndPartHaveTheirOptions) {
    Zantrel::Sample::ParameterLayout const layout;
    std::string const version = "  Version Group\n    Major Int 1\n    Minor Int 0\n";
    EXPECT_EQ(Outline(layout), "BasicBuildParameterFile Group\n" + version +
                                   Outline(*layout.m_profileEditor.GetNode(), 1) +
                                   R"(  PlatformConfigurator Group
    PlatformOptions Group
      PreSlicingProfile Choice Default; display Preslicing Profile; profiles of PreSlicing; property BasicProcessor.ProfilePreSlicing
      SlicingProfile Choice Default; display Slicing Profile; profiles of Slicing; property BasicProcessor.ProfileSlicing
      SampleBool Bool True; display Sample Checkbox; property BasicProcessor.SampleCheckbox
      SampleString String SomeStringValue; display Sample String; property BasicProcessor.SampleText
      ExportProfile Choice Default; display Export Profile; profiles of Export; property BasicProcessor.ProfileExport
    PartOptions Group
  PartConfigurator Group
    ExportProfile Choice Default; display Export Profile; profiles of Export; property BasicProcessor.ProfileExport
)");
}

std::string const NumbersAlone = R"(GenericParameters Group
  TestGroup Group
    SomeDouble Double 1.0000
    SomeReadOnlyDouble Double 2.0000; read-only
    SomeInteger250 Int 250
)";
std::string const WithGroupsAndFiles = NumbersAlone + R"(    SomeComplexGroup Group
      AgainSomeDouble Double 1.0000
      DoubleWithPrefix Double 1.0000; prefix SomePrefix
      ListOfDoubles Double 1.0000; display SomeInstance; entry Instance; not visible; list
    SomePath FileAbsolute; empty allowed
    SomeAttachment Attachment; empty allowed
    AnotherComplexNode Group
      PI Double 3.1415
      SomeFlagTrue Bool True
      SomeFlagFalse Bool False
)";
std::string const WithExtras = WithGroupsAndFiles + R"(    SomeDouble_extra Double 1.0000
    SomeReadOnlyDouble_extra Double 2.0000; read-only
    AnotherComplexNode_extra Group
      PI_extra Double 3.1415
      SomeFlagTrue_extra Bool True
      SomeFlagFalse_extra Bool False
)";

TEST(SampleLayout, TheLevelSaysHowMuchGenericParametersHold) {
    for (auto const& [level, expected] :
         {std::pair(-1, NumbersAlone), std::pair(0, NumbersAlone), std::pair(1, WithGroupsAndFiles),
          std::pair(2, WithExtras), std::pair(3, WithExtras)}) {
        Zantrel::Sample::ParameterLayout const layout(level);
        EXPECT_EQ(Outline(*layout.m_genericParameters.GetNode()), expected) << "level " << level;
    }
    EXPECT_EQ(Outline(*Zantrel::Sample::ParameterLayout().m_genericParameters.GetNode()), WithGroupsAndFiles);
}

TEST(SampleLayout, EachHandleStandsOnItsNodeInTheTree) {
    Zantrel::Sample::ParameterLayout const layout;
    auto const& x = layout;
    std::pair<Zantrel::ParameterLayout::pNode, wchar_t const*> const expected[] = {
        {x.m_general, L"General"},
        {x.m_defaultProfiles, L"General_DefaultProfiles"},
        {x.m_profilePreSlicing, L"General_DefaultProfiles_ProfilePreSlicing"},
        {x.m_profileSlicing, L"General_DefaultProfiles_ProfileSlicing"},
        {x.m_profileExport, L"General_DefaultProfiles_ProfileExport"},
        {x.m_preSlicing, L"PreSlicing"},
        {x.m_scaling, L"PreSlicing_Scaling"},
        {x.m_scalingX, L"PreSlicing_Scaling_X"},
        {x.m_scalingY, L"PreSlicing_Scaling_Y"},
        {x.m_scalingZ, L"PreSlicing_Scaling_Z"},
        {x.m_slicing, L"Slicing"},
        {x.m_sliceThickness, L"Slicing_SliceThickness"},
        {x.m_sliceType, L"Slicing_Type"},
        {x.m_sliceTypeEffective, L"Slicing_TypeEffective"},
        {x.m_sliceOptions, L"Slicing_Options"},
        {x.m_edgesToVectors, L"Slicing_Options_EdgesToVectors"},
        {x.m_trianglesToContours, L"Slicing_Options_TrianglesToContours"},
        {x.m_trianglesToContoursMinimalWidth, L"Slicing_Options_TrianglesToContoursMinimalWidth"},
        {x.m_fixing, L"Slicing_Fixing"},
        {x.m_gapFill, L"Slicing_Fixing_GapFill"},
        {x.m_gapFillEnabled, L"Slicing_Fixing_GapFill_Enabled"},
        {x.m_maxGapSize, L"Slicing_Fixing_GapFill_MaxGapSize"},
        {x.m_unify, L"Slicing_Fixing_Unify"},
        {x.m_unifyEnabled, L"Slicing_Fixing_Unify_Enabled"},
        {x.m_mergeGap, L"Slicing_Fixing_Unify_MergeGap"},
        {x.m_filtering, L"Slicing_Fixing_Filtering"},
        {x.m_filteringEnabled, L"Slicing_Fixing_Filtering_Enabled"},
        {x.m_minLengthOuterClosed, L"Slicing_Fixing_Filtering_MinLengthOuterClosed"},
        {x.m_minLengthInnerClosed, L"Slicing_Fixing_Filtering_MinLengthInnerClosed"},
        {x.m_minLengthOpen, L"Slicing_Fixing_Filtering_MinLengthOpen"},
        {x.m_export, L"Export"}};
    for (auto const& [handle, name] : expected) {
        LayoutNode const* node = handle.GetNode();
        ASSERT_NE(node, nullptr) << NativeToUtf8(name);
        EXPECT_EQ(NativeToUtf8(node->GetQueryName(*layout.m_categories.GetNode())), NativeToUtf8(name));
        EXPECT_EQ(node->Parent()->GetNode(node->m_name), node) << NativeToUtf8(name);
    }
}

} // namespace
