// SPDX-License-Identifier: Apache-2.0
//
// A layout from the sample or from a file of either format, and all that it declares as facts to compare.
//
// To look at: ReadWholeFile and WriteWholeFile of a layout; ISAXReader::GetAttributes and GetText, by
// which a handler takes a document that it knows nothing about.

#include "layout_source.h"

#include "common/host.h"
#include "files.h"

#include <set>

namespace Paramtool {

using namespace Zantrel;
using StringConversion::Utf8ToNative;

namespace {

/// Takes elements, attributes and texts of a layout's document.
class FactReader : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        if (reader.GetDepth() == 0) {
            Add(L"root", L" = " + Utf8ToNative(tag));
            return true;
        }
        m_path += L'/' + Utf8ToNative(tag);
        std::wstring const path = m_path.substr(1);
        Add(path, L"");
        for (auto const& [name, value] : reader.GetAttributes()) {
            Add(path + L' ' + Utf8ToNative(name), L" = " + Utf8ToNative(value));
        }
        if (!reader.GetText().empty()) {
            Add(path, L" = " + Utf8ToNative(reader.GetText()));
        }
        return true;
    }
    void HandleEndTag(std::string_view) override {
        m_path.resize(m_path.empty() ? 0 : m_path.rfind(L'/')); // empty at the root's end
    }
    void Add(std::wstring const& path, std::wstring const& text) { m_facts.insert({path, text}); }

    std::set<Fact> m_facts;

private:
    std::wstring m_path;
};

} // namespace

LayoutSource::LayoutSource(std::wstring const& source) {
    if (source == L"sample") {
        m_layout = std::make_unique<Sample::ParameterLayout>(2);
        m_layout->AddCategoryNodeIfNeeded();
        return;
    }
    m_layout = std::make_unique<ParameterLayout>();
    m_layout->SetResourceDictionary(&m_translations); // before the read, which fills it
    bool const isTemplate = RootOf(source) == L"KlvrPropertyTemplate";
    if (!(isTemplate ? KlvrPropertyTemplate::ReadWholeFile(*m_layout, source, &m_report)
                     : ReadWholeFile(*m_layout, source, &m_report))) {
        Host::FailToRead(source, m_report);
    }
    if (m_layout->m_profileEditor->Size() == 0) {
        Host::Fail(source + L" is no layout: it declares no parameters");
    }
}

void LayoutSource::Write(std::wstring const& path, LayoutFormat format) const {
    KlvrPropertyTemplate::WriteOptions everything;
    everything.m_profileListsOnly = false;
    WriteReport report;
    if (!(format == LayoutFormat::Template
              ? KlvrPropertyTemplate::WriteFile(*m_layout, path, everything, &report)
              : WriteWholeFile(*m_layout, path, &report))) {
        Host::Fail(report.Format());
    }
}

std::vector<Fact> LayoutSource::Facts() const {
    ScratchFile const scratch;
    WriteReport failure;
    if (!WriteFile(*m_layout, scratch.Path(), &failure)) { // all but the translations, which need their keys
        Host::Fail(failure.Format());
    }
    FactReader reader;
    ReadReport report;
    if (!KelAM::SaxUtilities::ReadFile(scratch.Path(), reader, &report)) {
        Host::FailToRead(scratch.Path(), report);
    }
    for (auto const& [key, property] : m_translations) {
        if (auto const* texts = PropertyCast<PersistentProperties>(property)) {
            for (auto const& [language, text] : texts->m_value) {
                auto const* translation = PropertyCast<std::wstring>(text);
                reader.Add(L"translation of " + std::wstring(key) + L" to " + std::wstring(language),
                           translation != nullptr ? L" = " + translation->m_value : L"");
            }
        }
    }
    return {reader.m_facts.begin(), reader.m_facts.end()};
}

} // namespace Paramtool
