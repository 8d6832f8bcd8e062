// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout_files/meta_file.h>

#include "layout_files/meta_file_read.h"
#include "layout_files/meta_file_whole_read.h"
#include "layout_files/meta_file_write.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>
#include <zantrel/text/string_conversion.h>

namespace Zantrel {

namespace {

/// The namespace is the default one, without a prefix: the tags are the names of the nodes as they stand.
KelAM::SaxUtilities::WriteOptions DocumentOptions(ParameterLayout const& layout) {
    auto options = Sax::DocumentOptions(StringConversion::NativeToUtf8(layout.m_name));
    options.m_namespaces.emplace_back(std::wstring(), std::wstring(XML_namespaces::Text::ProfilesMeta));
    return options;
}

} // namespace

// Two readers of one format: this one takes what values are read by, as programs have always got it from
// these files, and the whole one all that the writer can say. They stay apart, since what the first makes of
// odd files is relied upon.
bool ReadFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    ParameterLayoutIOMetaFileRead handler(layout, report);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool ReadStream(ParameterLayout& layout, std::basic_istream<char>& in, ReadReport* report) {
    ParameterLayoutIOMetaFileRead handler(layout, report);
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

bool ReadWholeFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    MetaFileWholeRead handler(layout, report);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool ReadWholeStream(ParameterLayout& layout, std::basic_istream<char>& in, ReadReport* report) {
    MetaFileWholeRead handler(layout, report);
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

// Any well-formed document can be read, as elements that the format doesn't know become nodes. What tells a
// layout from it is that something stands in the profile editor.
bool IsValidFile(std::wstring const& path, ReadReport* report) {
    ParameterLayout layout;
    ParameterLayoutIOMetaFileRead handler(layout); // nothing is kept, and so nothing is lost
    return KelAM::SaxUtilities::ReadFile(path, handler, report) && layout.m_profileEditor->Size() != 0;
}

bool WriteFile(ParameterLayout const& layout, std::wstring const& path, WriteReport* report) {
    ParameterLayoutIOMetaFileWrite const handler(layout);
    return KelAM::SaxUtilities::WriteFile(path, handler, DocumentOptions(layout), report);
}

bool WriteStream(ParameterLayout const& layout, std::basic_ostream<char>& out, WriteReport* report) {
    ParameterLayoutIOMetaFileWrite const handler(layout);
    return KelAM::SaxUtilities::WriteStream(out, handler, DocumentOptions(layout), report);
}

bool WriteWholeFile(ParameterLayout const& layout, std::wstring const& path, WriteReport* report) {
    ParameterLayoutIOMetaFileWrite const handler(layout, true);
    return KelAM::SaxUtilities::WriteFile(path, handler, DocumentOptions(layout), report);
}

bool WriteWholeStream(ParameterLayout const& layout, std::basic_ostream<char>& out, WriteReport* report) {
    ParameterLayoutIOMetaFileWrite const handler(layout, true);
    return KelAM::SaxUtilities::WriteStream(out, handler, DocumentOptions(layout), report);
}

} // namespace Zantrel
