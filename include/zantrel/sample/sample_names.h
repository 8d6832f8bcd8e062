// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

/// The words of the sample layout, under which a host addresses its nodes. They are set before any function
/// of the library can run, and never change. Names that occur at several places in the tree have a constant
/// for each place.
namespace Zantrel::Sample {

// Default profiles: a group of each category.
ZANTREL_EXPORT extern wchar_t const* const _General;
ZANTREL_EXPORT extern wchar_t const* const _DefaultProfiles;
ZANTREL_EXPORT extern wchar_t const* const _DefaultProfilePreSlicing;
ZANTREL_EXPORT extern wchar_t const* const _DefaultProfileSlicing;
ZANTREL_EXPORT extern wchar_t const* const _DefaultProfileExport;

// Under the profile editor; what follows stands below each category.
ZANTREL_EXPORT extern wchar_t const* const _Categories;

// The profile list of pre-slicing.
ZANTREL_EXPORT extern wchar_t const* const _Preslicing;
ZANTREL_EXPORT extern wchar_t const* const _Scaling;
ZANTREL_EXPORT extern wchar_t const* const _ScalingX;
ZANTREL_EXPORT extern wchar_t const* const _ScalingY;
ZANTREL_EXPORT extern wchar_t const* const _ScalingZ;

// The profile list of slicing, with the values of its options.
ZANTREL_EXPORT extern wchar_t const* const _Slicing;
ZANTREL_EXPORT extern wchar_t const* const _SliceThickness;
ZANTREL_EXPORT extern wchar_t const* const _SliceType;
ZANTREL_EXPORT extern wchar_t const* const _SliceTypeAbove;
ZANTREL_EXPORT extern wchar_t const* const _SliceTypeBelow;
ZANTREL_EXPORT extern wchar_t const* const _SliceTypeSymmetric;
ZANTREL_EXPORT extern wchar_t const* const _SliceEffective;
ZANTREL_EXPORT extern wchar_t const* const _SliceEffectiveTop;
ZANTREL_EXPORT extern wchar_t const* const _SliceEffectiveMiddle;
ZANTREL_EXPORT extern wchar_t const* const _SliceEffectiveBottom;
ZANTREL_EXPORT extern wchar_t const* const _SliceOptions;
ZANTREL_EXPORT extern wchar_t const* const _SliceOptionEdgeToVectors;
ZANTREL_EXPORT extern wchar_t const* const _SliceOptionTrianglesToContours;
ZANTREL_EXPORT extern wchar_t const* const _SliceOptionTrianglesToContoursMinimalWidth;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixing;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingGapFill;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingGapFillEnabled;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingGapFillSize;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingUnify;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingUnifyEnabled;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingUnifyMergeGap;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingFiltering;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingFilteringEnabled;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingFilteringMinOuter;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingFilteringMinInner;
ZANTREL_EXPORT extern wchar_t const* const _SliceFixingFilteringMinOpen;

// The profile list of export.
ZANTREL_EXPORT extern wchar_t const* const _Export;
ZANTREL_EXPORT extern wchar_t const* const _ExportNumber;

} // namespace Zantrel::Sample
