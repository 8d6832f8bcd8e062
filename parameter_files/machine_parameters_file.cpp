// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/machine_parameters_file.h>

#include "parameter_files/klvr_properties_read.h"
#include "parameter_files/klvr_properties_write.h"
#include "parameter_files/repeated_profiles.h"
#include "parameter_files/vocabulary.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>

namespace Zantrel::KlvrProperties {

namespace {

/// The root's name is the format's and never the layout's, which the validity check compares with.
KelAM::SaxUtilities::WriteOptions Document() {
    auto document = Sax::DocumentOptions(std::string(ParameterFileWord::KlvrMachineParameters));
    AddBuildProcessingNamespace(document, std::wstring(XML_namespaces::Text::BuildProcessors201604));
    return document;
}

} // namespace

bool ReadFile(ParameterDatabase& database, std::wstring const& path, ReadReport* report) {
    ParameterNodeReadKlvrProperties handler(database.GetProfileEditor());
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool ReadStream(ParameterDatabase& database, std::basic_istream<char>& in, ReadReport* report) {
    ParameterNodeReadKlvrProperties handler(database.GetProfileEditor());
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

bool WriteFile(ParameterDatabase const& database, std::wstring const& path, WriteOptions const& options,
               WriteReport* report) {
    std::vector<std::wstring> notes;
    ParameterNodeWriteKlvrProperties const handler(database.GetProfileEditor(), options, &notes);
    return ConcludeWrite(KelAM::SaxUtilities::WriteFile(path, handler, Document(), report), notes, report);
}

bool WriteStream(ParameterDatabase const& database, std::basic_ostream<char>& out,
                 WriteOptions const& options, WriteReport* report) {
    std::vector<std::wstring> notes;
    ParameterNodeWriteKlvrProperties const handler(database.GetProfileEditor(), options, &notes);
    return ConcludeWrite(KelAM::SaxUtilities::WriteStream(out, handler, Document(), report), notes, report);
}

} // namespace Zantrel::KlvrProperties
