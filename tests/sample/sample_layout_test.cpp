// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_layout.h>

#include <zantrel/text/string_conversion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// A layout is compared as a text with one line a node: name, type, default, and every attribute that differs
// from those of a new node of its type. So a wrong, missing or superfluous row or setting shows as a
// difference of texts. The text that is expected has before each line the level from which on the node is
// there.

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

std::string ExpectedOutline(int level) {
    std::istringstream lines(
#include "tests/sample/sample_layout_outline.txt"
    );
    std::string text;
    int from = 0;
    for (std::string line; lines >> from && lines.ignore() && std::getline(lines, line);) {
        text += from <= level ? line + '\n' : "";
    }
    return text;
}

TEST(SampleLayout, HasTheNodesOfEveryStageAndGenericParametersByItsLevel) {
    for (int level = -1; level <= 3; ++level) {
        EXPECT_EQ(Outline(Sample::ParameterLayout(level)), ExpectedOutline(std::max(level, 0)));
    }
    EXPECT_EQ(Outline(Sample::ParameterLayout()), ExpectedOutline(1));
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
