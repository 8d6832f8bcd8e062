// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_layout.h>

#include <zantrel/layout_files/meta_file.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

// A layout is compared as its meta file, which has every attribute that differs from those of a new node of
// its type. So a wrong, missing or superfluous row or setting shows as a difference of texts. The text that
// is expected has before each line the level from which on the line is there.

namespace {

using Zantrel::LayoutNode;
namespace Sample = Zantrel::Sample;

std::string MetaFileOf(Sample::ParameterLayout const& layout) {
    std::ostringstream out;
    EXPECT_TRUE(Zantrel::WriteStream(layout, out));
    return out.str();
}

std::string ExpectedFile(int level) {
    std::istringstream lines(
#include "tests/sample/sample_layout_meta_file.txt"
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
        EXPECT_EQ(MetaFileOf(Sample::ParameterLayout(level)), ExpectedFile(std::max(level, 0)));
    }
    EXPECT_EQ(MetaFileOf(Sample::ParameterLayout()), ExpectedFile(1));
}

void AppendBelow(LayoutNode const& node, std::vector<LayoutNode const*>& nodes) {
    for (LayoutNode const* const child : node.m_children) {
        nodes.push_back(child);
        AppendBelow(*child, nodes);
    }
}

TEST(SampleLayout, TheHandlesStandOnTheNodesOfTheTreeInItsOrder) {
    Sample::ParameterLayout const x;
    std::vector<LayoutNode const*> const handles{x.m_general,
                                                 x.m_defaultProfiles,
                                                 x.m_profilePreSlicing,
                                                 x.m_profileSlicing,
                                                 x.m_profileExport,
                                                 x.m_preSlicing,
                                                 x.m_scaling,
                                                 x.m_scalingX,
                                                 x.m_scalingY,
                                                 x.m_scalingZ,
                                                 x.m_slicing,
                                                 x.m_sliceThickness,
                                                 x.m_sliceType,
                                                 x.m_sliceTypeEffective,
                                                 x.m_sliceOptions,
                                                 x.m_edgesToVectors,
                                                 x.m_trianglesToContours,
                                                 x.m_trianglesToContoursMinimalWidth,
                                                 x.m_fixing,
                                                 x.m_gapFill,
                                                 x.m_gapFillEnabled,
                                                 x.m_maxGapSize,
                                                 x.m_unify,
                                                 x.m_unifyEnabled,
                                                 x.m_mergeGap,
                                                 x.m_filtering,
                                                 x.m_filteringEnabled,
                                                 x.m_minLengthOuterClosed,
                                                 x.m_minLengthInnerClosed,
                                                 x.m_minLengthOpen,
                                                 x.m_export};
    std::vector<LayoutNode const*> nodes;
    AppendBelow(*x.m_categories.GetNode(), nodes);
    ASSERT_GT(nodes.size(), handles.size());
    nodes.resize(handles.size()); // what stands below m_export has no handles
    EXPECT_EQ(handles, nodes);
    EXPECT_TRUE(x.m_slicing->m_expanded) << "which a meta file doesn't say of a list";
}

} // namespace
