// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout_files/property_template.h>

#include "layout_files/property_template_read.h"
#include "layout_files/property_template_write.h"
#include "layout_files/vocabulary.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>

#include <utility>

namespace Zantrel::KlvrPropertyTemplate {

namespace {

KelAM::SaxUtilities::WriteOptions DocumentOptions() {
    auto options = Sax::DocumentOptions(std::string(LayoutWord::PropertyTemplate));
    AddBuildProcessingNamespace(options, std::wstring(XML_namespaces::Text::BuildProcessors201604));
    return options;
}

} // namespace

bool ReadFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    ParameterLayoutIOPropertyTemplateRead handler(layout, false, report);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool ReadStream(ParameterLayout& layout, std::basic_istream<char>& in, ReadReport* report) {
    ParameterLayoutIOPropertyTemplateRead handler(layout, false, report);
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

// Hosts rely on what ReadFile passes over, so that what it takes more has functions of its own.
bool ReadWholeFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    ParameterLayoutIOPropertyTemplateRead handler(layout, true);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool ReadWholeStream(ParameterLayout& layout, std::basic_istream<char>& in, ReadReport* report) {
    ParameterLayoutIOPropertyTemplateRead handler(layout, true);
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

/// Says no of every file: see the check, which asks for a name that no root has. Whether the document can be
/// read plays no part in that, and only the report tells it.
bool IsValidFile(std::wstring const& path, ReadReport* report) {
    ParameterLayoutIOPropertyTemplateValidityCheck check;
    ReadReport failure; // alone: the check takes no element
    failure.m_limit = 0;
    if (report != nullptr) {
        failure.m_limits = report->m_limits;
    }
    KelAM::SaxUtilities::ReadFile(path, check, &failure); // the root's name is all that counts
    for (ReadReport::Entry& entry : failure.m_entries) {
        if (report != nullptr) {
            report->Add(std::move(entry));
        }
    }
    return check.m_valid;
}

bool WriteFile(ParameterLayout const& layout, std::wstring const& path, WriteOptions const& options,
               WriteReport* report) {
    ParameterLayoutIOPropertyTemplateWrite const handler(layout, options.m_profileListsOnly);
    return KelAM::SaxUtilities::WriteFile(path, handler, DocumentOptions(), report);
}

bool WriteStream(ParameterLayout const& layout, std::basic_ostream<char>& out, WriteOptions const& options,
                 WriteReport* report) {
    ParameterLayoutIOPropertyTemplateWrite const handler(layout, options.m_profileListsOnly);
    return KelAM::SaxUtilities::WriteStream(out, handler, DocumentOptions(), report);
}

} // namespace Zantrel::KlvrPropertyTemplate
