// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/io_filtering.h>

#include "parameter_files/vocabulary.h"

#include <zantrel/sax/sax_reader.h>

namespace Zantrel {

bool ParameterDatabaseIOFilteringReader::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    // Every element is taken, so that a filter's file may have others beside the two, at any depth.
    if (m_filtering == nullptr) {
        return true;
    }
    if (tag == ParameterFileWord::ExportGeneralParameters) {
        reader.ReadValue(m_filtering->m_exportGeneralParameters);
    } else if (tag == ParameterFileWord::ExportDefaultParameters) {
        reader.ReadValue(m_filtering->m_exportDefaultParameters);
    }
    return true;
}

} // namespace Zantrel
