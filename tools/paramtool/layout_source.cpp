// SPDX-License-Identifier: Apache-2.0
//
// A layout from the sample or from a file of either format.
//
// To look at: ReadWholeFile and WriteWholeFile, which lose nothing of a layout, beside ReadFile, which takes
// what values are read by.

#include "layout_source.h"

#include "common/host.h"

namespace Paramtool {

using namespace Zantrel;

LayoutSource::LayoutSource(std::wstring const& source) : m_name(source) {
    if (source == L"sample") {
        // The sample at its fullest, and with categories, so that no file of it has more than the layout.
        m_layout = std::make_unique<Sample::ParameterLayout>(2);
        m_layout->AddCategoryNodeIfNeeded();
        return;
    }
    InputFile const input(source);
    m_name = input.Name();
    FileSort const sort = SortOf(input.Path());
    if (sort.kind == FileKind::MachineParameters || sort.kind == FileKind::Ticket) {
        Host::Fail(m_name + L" is no layout: it is " + WordsOf(sort.kind));
    }
    m_isOfTemplate = sort.kind == FileKind::Template;
    m_layout = std::make_unique<ParameterLayout>();
    m_layout->SetResourceDictionary(&m_translations); // before the read, which fills it
    if (!(m_isOfTemplate ? KlvrPropertyTemplate::ReadWholeFile(*m_layout, input.Path(), &m_report)
                         : ReadWholeFile(*m_layout, input.Path(), &m_report))) {
        Host::FailToRead(m_name, m_report);
    }
    if (m_layout->m_profileEditor->Size() == 0) {
        Host::Fail(m_name + L" is no layout: it declares no parameters");
    }
}

void LayoutSource::Write(std::wstring const& path, LayoutFormat format) const {
    // By its default a template has what stands in profile lists only; a layout that is written here is
    // wanted whole.
    KlvrPropertyTemplate::WriteOptions everything;
    everything.m_profileListsOnly = false;
    WriteReport report;
    if (!(format == LayoutFormat::Template
              ? KlvrPropertyTemplate::WriteFile(*m_layout, path, everything, &report)
              : WriteWholeFile(*m_layout, path, &report))) {
        Host::Fail(report.Format());
    }
}

} // namespace Paramtool
