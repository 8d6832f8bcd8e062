// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_names.h>

// Each is a part of file formats: a changed text is a parameter that older files no longer fill. Several have
// one text, as stages have parameters of one name; a host takes the constant of the stage that it means.

namespace Zantrel::Sample {

wchar_t const* const _General = L"General";
wchar_t const* const _DefaultProfiles = L"DefaultProfiles";
wchar_t const* const _DefaultProfilePreSlicing = L"ProfilePreSlicing";
wchar_t const* const _DefaultProfileSlicing = L"ProfileSlicing";
wchar_t const* const _DefaultProfileExport = L"ProfileExport";

wchar_t const* const _Categories = L"Categories";

wchar_t const* const _Preslicing = L"PreSlicing";
wchar_t const* const _Scaling = L"Scaling";
wchar_t const* const _ScalingX = L"X";
wchar_t const* const _ScalingY = L"Y";
wchar_t const* const _ScalingZ = L"Z";

wchar_t const* const _Slicing = L"Slicing";
wchar_t const* const _SliceThickness = L"SliceThickness";
wchar_t const* const _SliceType = L"Type";
wchar_t const* const _SliceTypeAbove = L"Above";
wchar_t const* const _SliceTypeBelow = L"Below";
wchar_t const* const _SliceTypeSymmetric = L"Symmetric";
wchar_t const* const _SliceEffective = L"TypeEffective";
wchar_t const* const _SliceEffectiveTop = L"Top";
wchar_t const* const _SliceEffectiveMiddle = L"Middle";
wchar_t const* const _SliceEffectiveBottom = L"Bottom";
wchar_t const* const _SliceOptions = L"Options";
wchar_t const* const _SliceOptionEdgeToVectors = L"EdgesToVectors";
wchar_t const* const _SliceOptionTrianglesToContours = L"TrianglesToContours";
wchar_t const* const _SliceOptionTrianglesToContoursMinimalWidth = L"TrianglesToContoursMinimalWidth";
wchar_t const* const _SliceFixing = L"Fixing";
wchar_t const* const _SliceFixingGapFill = L"GapFill";
// One text at three places: a look-up starts at the group that is meant.
wchar_t const* const _SliceFixingGapFillEnabled = L"Enabled";
wchar_t const* const _SliceFixingGapFillSize = L"MaxGapSize";
wchar_t const* const _SliceFixingUnify = L"Unify";
wchar_t const* const _SliceFixingUnifyEnabled = L"Enabled";
wchar_t const* const _SliceFixingUnifyMergeGap = L"MergeGap";
wchar_t const* const _SliceFixingFiltering = L"Filtering";
wchar_t const* const _SliceFixingFilteringEnabled = L"Enabled";
wchar_t const* const _SliceFixingFilteringMinOuter = L"MinLengthOuterClosed";
wchar_t const* const _SliceFixingFilteringMinInner = L"MinLengthInnerClosed";
wchar_t const* const _SliceFixingFilteringMinOpen = L"MinLengthOpen";

wchar_t const* const _Export = L"Export";
wchar_t const* const _ExportNumber = L"NumExports";

} // namespace Zantrel::Sample
