// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout_files/meta_file.h>

#include "layout_files/meta_file_read.h"
#include "layout_files/meta_file_write.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>
#include <zantrel/text/string_conversion.h>

namespace Zantrel {

namespace {

bool ReadNodes(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    ParameterLayoutIOMetaFileRead handler(layout);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

} // namespace

bool ReadFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report) {
    bool const isRead = ReadNodes(layout, path, report);
    if (isRead) {
        layout.AddCategoryNodeIfNeeded();
        layout.AddCategoryNodeIfNeeded(); // twice, as this format has always been read; it finds the option
    }
    return isRead;
}

bool IsValidFile(std::wstring const& path, ReadReport* report) {
    ParameterLayout layout;
    return ReadNodes(layout, path, report) && layout.m_profileEditor->Size() != 0;
}

bool WriteFile(ParameterLayout const& layout, std::wstring const& path, WriteReport* report) {
    auto options = Sax::DocumentOptions(StringConversion::NativeToUtf8(layout.m_name));
    options.m_namespaces.emplace_back(std::wstring(), XML_namespaces::m_namespace_profiles_meta);
    return KelAM::SaxUtilities::WriteFile(path, ParameterLayoutIOMetaFileWrite(layout), options, report);
}

} // namespace Zantrel
