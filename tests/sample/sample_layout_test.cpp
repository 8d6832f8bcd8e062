// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_layout.h>

#include <zantrel/text/string_conversion.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// A layout is compared as a text with one line a node: name, type, default, and every attribute that differs
// from those of a new node of its type. So a wrong, missing or superfluous row or setting shows as a
// difference of texts.

namespace {

using StringConversion::NativeToUtf8;
using Zantrel::LayoutNode;
namespace Sample = Zantrel::Sample;

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

TEST(SampleLayout, HasTheNodesOfEveryStageAndOptionsForPlatformAndPart) {
    Sample::ParameterLayout const layout;
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
    EXPECT_EQ(Outline(layout), R"(BasicBuildParameterFile Group
  Version Group
    Major Int 1
    Minor Int 0
)" + Outline(*layout.m_profileEditor.GetNode(), 1) +
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
    for (int level = -1; level <= 3; ++level) {
        Sample::ParameterLayout const layout(level);
        EXPECT_EQ(Outline(*layout.m_genericParameters.GetNode()), level <= 0   ? NumbersAlone
                                                                  : level == 1 ? WithGroupsAndFiles
                                                                               : WithExtras)
            << "level " << level;
    }
    EXPECT_EQ(Outline(*Sample::ParameterLayout().m_genericParameters.GetNode()), WithGroupsAndFiles);
}

void AppendBelow(LayoutNode const& node, std::vector<LayoutNode const*>& nodes) {
    for (LayoutNode const* const child : node.m_children) {
        EXPECT_EQ(node.GetNode(child->m_name), child) << NativeToUtf8(child->m_name);
        nodes.push_back(child);
        AppendBelow(*child, nodes);
    }
}

template <class... Handle> std::vector<LayoutNode const*> NodesOf(Handle const&... handles) {
    return {handles.GetNode()...};
}

TEST(SampleLayout, TheHandlesStandOnTheNodesOfTheTreeInItsOrder) {
    Sample::ParameterLayout const x;
    auto const handles =
        NodesOf(x.m_general, x.m_defaultProfiles, x.m_profilePreSlicing, x.m_profileSlicing,
                x.m_profileExport, x.m_preSlicing, x.m_scaling, x.m_scalingX, x.m_scalingY, x.m_scalingZ,
                x.m_slicing, x.m_sliceThickness, x.m_sliceType, x.m_sliceTypeEffective, x.m_sliceOptions,
                x.m_edgesToVectors, x.m_trianglesToContours, x.m_trianglesToContoursMinimalWidth, x.m_fixing,
                x.m_gapFill, x.m_gapFillEnabled, x.m_maxGapSize, x.m_unify, x.m_unifyEnabled, x.m_mergeGap,
                x.m_filtering, x.m_filteringEnabled, x.m_minLengthOuterClosed, x.m_minLengthInnerClosed,
                x.m_minLengthOpen, x.m_export);
    std::vector<LayoutNode const*> nodes;
    AppendBelow(*x.m_categories.GetNode(), nodes);
    ASSERT_GT(nodes.size(), handles.size());
    nodes.resize(handles.size()); // what stands below m_export has no handles
    EXPECT_EQ(handles, nodes);
}

} // namespace
