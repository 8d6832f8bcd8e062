// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sample/sample_database.h>

#include "sample/range_names.h"

#include <zantrel/sample/sample_names.h>

namespace Zantrel::Sample {

namespace {

void SetRange(ParameterNode range, double begin, double end) {
    range.Get(RangeBegin).SetValue(begin);
    range.Get(RangeEnd).SetValue(end);
}

} // namespace

ParameterDatabase::ParameterDatabase(Sample::ParameterLayout const* layout)
    : Zantrel::ParameterDatabase(layout), m_pSampleLayout(layout) {}

// A database that has got another layout since, by an assignment from a plain one, has no nodes for
// the handles; and in one on a copy of a layout no cursor is valid, as a copy answers to no name.
void ParameterDatabase::PopulateDefault() {
    ParameterNode const editor = GetProfileEditor();
    if (!editor.IsValid() || GetLayout() != m_pSampleLayout) {
        return;
    }
    Sample::ParameterLayout const& layout = *m_pSampleLayout;
    ParameterNode categories = editor.Get(_Categories);
    ParameterNode const category = categories.GetDefault();

    ParameterNode const ranges = category.Get(layout.m_export).GetDefault().Get(Ranges);
    ranges.AddListNode(true);
    ranges.AddListNode(true);
    SetRange(ranges.GetListNode(0), 0.0, 1.0);
    SetRange(ranges.GetListNode(1), 1.0, 2.0);

    // Each profile and category is a copy of its default, so what is to be in it must be in the default by
    // then.
    category.Get(layout.m_preSlicing).AddProfile(L"Default", true);
    category.Get(layout.m_slicing).AddProfile(L"Default", true);
    category.Get(layout.m_export).AddProfile(L"Default", true);

    ParameterNode const choices = category.Get(_General).Get(_DefaultProfiles);
    choices.Get(layout.m_profilePreSlicing).SetValueFromText(L"Default");
    choices.Get(layout.m_profileSlicing).SetValueFromText(L"Default");
    choices.Get(layout.m_profileExport).SetValueFromText(L"Default");

    categories.AddProfile(L"Default Category", true);
    categories.AddProfile(L"Category Advanced", true);
}

} // namespace Zantrel::Sample
