// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/layout/parameter_layout.h>

namespace Zantrel::Sample {

/// A complete layout assembled in code: the schema of a small build processor, as an example for hosts and as
/// a yardstick for layouts read from files. Its root is "BasicBuildParameterFile", and so is the root element
/// of its parameter files.
///
///     ProfileEditor
///         GenericParameters/TestGroup      as much as the level says
///         Categories                       a profile list, of which each category holds
///             General/DefaultProfiles      which profile of each stage is taken
///             PreSlicing, Slicing, Export  profile lists, one for each stage of a build
///     PlatformConfigurator/PlatformOptions
///     PartConfigurator
///
/// AddCategoryNodeIfNeeded is left to the host. Only read once it is built, and then from any thread.
///
///     Sample::ParameterLayout layout(2);
///     layout.AddCategoryNodeIfNeeded();
///     Sample::ParameterDatabase database(&layout);
///     database.PopulateDefault();
class ZANTREL_EXPORT ParameterLayout : public Zantrel::ParameterLayout {
public:
    /// `level` says how much GenericParameters holds: numbers only at 0 and below; groups, a list of plain
    /// numbers and a node of each file type from 1 on; at 2 and above some of them once more, named
    /// "..._extra".
    explicit ParameterLayout(int level = 1);

    // Handles on the nodes below Categories, in the order of the tree; each stands for the node of the name
    // behind it. A copy's handles stay in its source, which must outlive it.
    pNode m_general;                         ///< General
    pNode m_defaultProfiles;                 ///< General/DefaultProfiles
    pNode m_profilePreSlicing;               ///< General/DefaultProfiles/ProfilePreSlicing
    pNode m_profileSlicing;                  ///< General/DefaultProfiles/ProfileSlicing
    pNode m_profileExport;                   ///< General/DefaultProfiles/ProfileExport
    pNode m_preSlicing;                      ///< PreSlicing
    pNode m_scaling;                         ///< PreSlicing/Scaling
    pNode m_scalingX;                        ///< PreSlicing/Scaling/X
    pNode m_scalingY;                        ///< PreSlicing/Scaling/Y
    pNode m_scalingZ;                        ///< PreSlicing/Scaling/Z
    pNode m_slicing;                         ///< Slicing
    pNode m_sliceThickness;                  ///< Slicing/SliceThickness; the one in Export has no handle
    pNode m_sliceType;                       ///< Slicing/Type
    pNode m_sliceTypeEffective;              ///< Slicing/TypeEffective
    pNode m_sliceOptions;                    ///< Slicing/Options
    pNode m_edgesToVectors;                  ///< Slicing/Options/EdgesToVectors
    pNode m_trianglesToContours;             ///< Slicing/Options/TrianglesToContours
    pNode m_trianglesToContoursMinimalWidth; ///< Slicing/Options/TrianglesToContoursMinimalWidth
    pNode m_fixing;                          ///< Slicing/Fixing
    pNode m_gapFill;                         ///< Slicing/Fixing/GapFill
    pNode m_gapFillEnabled;                  ///< Slicing/Fixing/GapFill/Enabled
    pNode m_maxGapSize;                      ///< Slicing/Fixing/GapFill/MaxGapSize
    pNode m_unify;                           ///< Slicing/Fixing/Unify
    pNode m_unifyEnabled;                    ///< Slicing/Fixing/Unify/Enabled
    pNode m_mergeGap;                        ///< Slicing/Fixing/Unify/MergeGap
    pNode m_filtering;                       ///< Slicing/Fixing/Filtering
    pNode m_filteringEnabled;                ///< Slicing/Fixing/Filtering/Enabled
    pNode m_minLengthOuterClosed;            ///< Slicing/Fixing/Filtering/MinLengthOuterClosed
    pNode m_minLengthInnerClosed;            ///< Slicing/Fixing/Filtering/MinLengthInnerClosed
    pNode m_minLengthOpen;                   ///< Slicing/Fixing/Filtering/MinLengthOpen
    pNode m_export;                          ///< Export

protected:
    /// Fills the layout on top of the anchors. Called by the constructor, once.
    void _Init(int level);

private:
    void AddGeneral(LayoutNode* categories);
    void AddPreSlicing(LayoutNode* categories);
    void AddSlicing(LayoutNode* categories);
    void AddFixing(LayoutNode* slicing);
    void AddExport(LayoutNode* categories);
};

} // namespace Zantrel::Sample
