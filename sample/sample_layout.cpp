// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_layout.h>

#include "sample/range_names.h"

#include <zantrel/sample/sample_names.h>

#include <initializer_list>
#include <string>

// Every node is made on its final parent, from the top down: a subtree that is built aside and copied in
// answers no look-up by name, and handles on it would stay with the original.

// The order of the nodes is that of the files and of the handles in the header, stage by stage. Names of
// profile parameters are constants that hosts may look up; those of options and of test parameters, which
// nobody but a user reads, stand here as they are.

namespace Zantrel::Sample {

namespace {

using Type = eTypeLayoutNode;

LayoutNode* AddExpandedGroup(LayoutNode* parent, wchar_t const* name) {
    return parent->AddNode(name)->SetExpanded(true);
}

LayoutNode* AddProfileList(LayoutNode* parent, wchar_t const* name) {
    return parent->AddNode(name)->SetProfile(true, L"Profile");
}

/// A choice among the profiles of the list `profileList`.
LayoutNode* AddProfileChoice(LayoutNode* parent, wchar_t const* name, wchar_t const* displayName,
                             wchar_t const* profileList) {
    return parent->AddNode(name, Type::OptionsFromProfiles, L"Default")
        ->SetDisplayName(displayName)
        ->SetProfileName(profileList);
}

/// An option that is shown as its value.
void AddPlainOptions(LayoutNode* node, std::initializer_list<wchar_t const*> values) {
    for (wchar_t const* value : values) {
        node->AddOption(value, value);
    }
}

/// For the platform and for a part, under one property name: so a part can override what the platform
/// chooses.
void AddExportChoice(LayoutNode* parent) {
    AddProfileChoice(parent, L"ExportProfile", L"Export Profile", _Export)
        ->SetPropName(L"BasicProcessor.ProfileExport");
}

void AddPlatformOptions(LayoutNode* options) {
    AddProfileChoice(options, L"PreSlicingProfile", L"Preslicing Profile", _Preslicing)
        ->SetPropName(L"BasicProcessor.ProfilePreSlicing");
    AddProfileChoice(options, L"SlicingProfile", L"Slicing Profile", _Slicing)
        ->SetPropName(L"BasicProcessor.ProfileSlicing");
    options->AddNode(L"SampleBool", Type::Bool, L"True")
        ->SetDisplayName(L"Sample Checkbox")
        ->SetPropName(L"BasicProcessor.SampleCheckbox");
    options->AddNode(L"SampleString", Type::String, L"SomeStringValue")
        ->SetDisplayName(L"Sample String")
        ->SetPropName(L"BasicProcessor.SampleText");
    AddExportChoice(options);
}

// The test parameters show one node of each kind. Each level holds what the one before it holds, in the same
// order, so that files of a lower level stay readable.
void AddNumbers(LayoutNode* group) {
    group->AddNode(L"SomeDouble", Type::Double, 1.0);
    group->AddNode(L"SomeReadOnlyDouble", Type::Double, 2.0)->SetReadOnly(true);
    group->AddNode(L"SomeInteger250", Type::Int, 250);
}

void AddGroupsAndFiles(LayoutNode* group) {
    LayoutNode* complex = group->AddNode(L"SomeComplexGroup");
    complex->AddNode(L"AgainSomeDouble", Type::Double, 1.0);
    complex->AddNode(L"DoubleWithPrefix", Type::Double, 1.0)->SetPrefix(L"SomePrefix");
    complex->AddNode(L"ListOfDoubles", Type::Double, 1.0)
        ->SetList(true, L"Instance", std::wstring())
        ->SetVisible(false)
        ->SetDisplayName(L"SomeInstance");
    group->AddNode(L"SomePath", Type::FileAbsolute, L"")->SetAllowEmpty(true);
    group->AddNode(L"SomeAttachment", Type::FileAttachment, L"")->SetAllowEmpty(true);
    LayoutNode* another = group->AddNode(L"AnotherComplexNode");
    another->AddNode(L"PI", Type::Double, 3.1415);
    another->AddNode(L"SomeFlagTrue", Type::Bool, true);
    another->AddNode(L"SomeFlagFalse", Type::Bool, false);
}

void AddExtras(LayoutNode* group) {
    group->AddNode(L"SomeDouble_extra", Type::Double, 1.0);
    group->AddNode(L"SomeReadOnlyDouble_extra", Type::Double, 2.0)->SetReadOnly(true);
    LayoutNode* another = group->AddNode(L"AnotherComplexNode_extra");
    another->AddNode(L"PI_extra", Type::Double, 3.1415);
    another->AddNode(L"SomeFlagTrue_extra", Type::Bool, true);
    another->AddNode(L"SomeFlagFalse_extra", Type::Bool, false);
}

} // namespace

ParameterLayout::ParameterLayout(int level) { _Init(level); }

void ParameterLayout::_Init(int level) {
    SetName(L"BasicBuildParameterFile");
    // First, since it makes the nodes of m_genericParameters and m_categories, which are null before.
    _InitCategoryLevel(true);
    AddGeneral(m_categories);
    AddPreSlicing(m_categories);
    AddSlicing(m_categories);
    AddExport(m_categories);

    AddPlatformOptions(m_platformOptions);
    AddExportChoice(m_partConfigurator);

    LayoutNode* test = m_genericParameters->AddNode(L"TestGroup");
    AddNumbers(test);
    if (level > 0) {
        AddGroupsAndFiles(test);
    }
    if (level >= 2) {
        AddExtras(test);
    }
}

void ParameterLayout::AddGeneral(LayoutNode* categories) {
    m_general = AddExpandedGroup(categories, _General);
    m_defaultProfiles = AddExpandedGroup(m_general, _DefaultProfiles);
    m_profilePreSlicing =
        AddProfileChoice(m_defaultProfiles, _DefaultProfilePreSlicing, L"Preslicing Profile", _Preslicing);
    m_profileSlicing =
        AddProfileChoice(m_defaultProfiles, _DefaultProfileSlicing, L"Slicing Profile", _Slicing);
    m_profileExport = AddProfileChoice(m_defaultProfiles, _DefaultProfileExport, L"Export Profile", _Export);
}

void ParameterLayout::AddPreSlicing(LayoutNode* categories) {
    m_preSlicing = AddProfileList(categories, _Preslicing);
    m_scaling = m_preSlicing->AddNode(_Scaling);
    m_scalingX = m_scaling->AddNode(_ScalingX, Type::Double, 1.0)->SetRange(-100.0, 100.0);
    m_scalingY = m_scaling->AddNode(_ScalingY, Type::Double, 1.0)->SetRange(-100.0, 100.0);
    m_scalingZ = m_scaling->AddNode(_ScalingZ, Type::Double, 1.0)->SetRange(-100.0, 100.0);
}

void ParameterLayout::AddSlicing(LayoutNode* categories) {
    m_slicing = AddProfileList(categories, _Slicing)->SetExpanded(true);
    m_sliceThickness = m_slicing->AddNode(_SliceThickness, Type::Distance, 0.1);
    m_sliceType = m_slicing->AddNode(_SliceType, Type::Options, _SliceTypeAbove);
    AddPlainOptions(m_sliceType, {_SliceTypeAbove, _SliceTypeSymmetric, _SliceTypeBelow});
    m_sliceTypeEffective = m_slicing->AddNode(_SliceEffective, Type::Options, _SliceEffectiveMiddle)
                               ->SetDescription(L"Location of slice in physical machine");
    AddPlainOptions(m_sliceTypeEffective, {_SliceEffectiveTop, _SliceEffectiveMiddle, _SliceEffectiveBottom});

    m_sliceOptions = m_slicing->AddNode(_SliceOptions);
    m_edgesToVectors = m_sliceOptions->AddNode(_SliceOptionEdgeToVectors, Type::Bool, false);
    m_trianglesToContours = m_sliceOptions->AddNode(_SliceOptionTrianglesToContours, Type::Bool, true);
    m_trianglesToContoursMinimalWidth =
        m_sliceOptions->AddNode(_SliceOptionTrianglesToContoursMinimalWidth, Type::Double, 0.0)
            ->SetPostfix(L"SomeUnit");
    AddFixing(m_slicing);
}

void ParameterLayout::AddFixing(LayoutNode* slicing) {
    m_fixing = AddExpandedGroup(slicing, _SliceFixing);

    m_gapFill = AddExpandedGroup(m_fixing, _SliceFixingGapFill);
    m_gapFillEnabled = m_gapFill->AddNode(_SliceFixingGapFillEnabled, Type::Bool, true);
    m_maxGapSize = m_gapFill->AddNode(_SliceFixingGapFillSize, Type::Double, 0.1)->SetPostfix(L"mm");

    m_unify = AddExpandedGroup(m_fixing, _SliceFixingUnify);
    m_unifyEnabled = m_unify->AddNode(_SliceFixingUnifyEnabled, Type::Bool, true);
    m_mergeGap = m_unify->AddNode(_SliceFixingUnifyMergeGap, Type::Double, 0.0);

    m_filtering = AddExpandedGroup(m_fixing, _SliceFixingFiltering);
    m_filteringEnabled = m_filtering->AddNode(_SliceFixingFilteringEnabled, Type::Bool, false);
    m_minLengthOuterClosed = m_filtering->AddNode(_SliceFixingFilteringMinOuter, Type::Double, 0.3);
    m_minLengthInnerClosed = m_filtering->AddNode(_SliceFixingFilteringMinInner, Type::Double, 0.3);
    m_minLengthOpen = m_filtering->AddNode(_SliceFixingFilteringMinOpen, Type::Double, 0.0);
}

void ParameterLayout::AddExport(LayoutNode* categories) {
    m_export = AddProfileList(categories, _Export);
    m_export->AddNode(_SliceThickness, Type::Double, 0.2); // a plain number here, a Distance in Slicing
    m_export->AddNode(_ExportNumber, Type::Int, 100);
    LayoutNode* ranges = m_export->AddNode(Ranges)->SetList(true, L"Range", std::wstring());
    ranges->AddNode(RangeBegin, Type::Double, 0.0);
    ranges->AddNode(RangeEnd, Type::Double, 0.0);
}

} // namespace Zantrel::Sample
