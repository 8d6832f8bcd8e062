// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>
#include <zantrel/parameter_files/machine_parameters_file.h>
#include <zantrel/sax/sax_persist.h>

#include <string>
#include <vector>

/// Writes a place of a database, with all below it, as the content of an element of a machine parameters
/// file. The database and the options must outlive the handler and mustn't change while it writes. What can't
/// be written makes the writer fail, so Write itself always answers true.
class ParameterNodeWriteKlvrProperties : public ISAXPersistHelper {
public:
    /// `notes`, where given, gets what a report is to say of the write.
    ParameterNodeWriteKlvrProperties(Zantrel::ParameterView const& node,
                                     Zantrel::KlvrProperties::WriteOptions const& options,
                                     std::vector<std::wstring>* notes = nullptr)
        : m_node(node), m_options(&options), m_notes(notes) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    Zantrel::ParameterView m_node;
    Zantrel::KlvrProperties::WriteOptions const* m_options;
    std::vector<std::wstring>* m_notes;
};
