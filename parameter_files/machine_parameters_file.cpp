// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/machine_parameters_file.h>

#include "parameter_files/klvr_properties_read.h"
#include "parameter_files/klvr_properties_write.h"
#include "parameter_files/node_value_sax.h"
#include "parameter_files/vocabulary.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>

namespace Zantrel::KlvrProperties {

bool ReadFile(ParameterDatabase& database, std::wstring const& path, ReadReport* report) {
    ParameterNodeReadKlvrProperties handler(database.GetProfileEditor());
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool WriteFile(ParameterDatabase const& database, std::wstring const& path, WriteOptions const& options,
               WriteReport* report) {
    auto document = Sax::DocumentOptions(std::string(ParameterFileWord::KlvrMachineParameters));
    AddBuildProcessingNamespace(document, XML_namespaces::m_namespace_build_processors_2016_04);
    ParameterNodeWriteKlvrProperties const handler(ProfileEditorOf(database), options);
    return KelAM::SaxUtilities::WriteFile(path, handler, document, report);
}

} // namespace Zantrel::KlvrProperties
