// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/sax/sax_persist.h>

#include <string>
#include <vector>

/// Writes a place of a database, with all below it, as the content of an element of a generic parameter file.
/// The database must outlive the handler and mustn't change while it writes; the filter is copied. What can't
/// be written makes the writer fail, so Write itself always answers true.
class ParameterNodeWrite : public ISAXPersistHelper {
public:
    /// `notes`, where given, gets what a report is to say of the write.
    ParameterNodeWrite(Zantrel::ParameterView const& node,
                       Zantrel::ParameterDatabaseIOFiltering const& filtering,
                       std::vector<std::wstring>* notes = nullptr)
        : m_node(node), m_filtering(filtering), m_notes(notes) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    Zantrel::ParameterView m_node;
    Zantrel::ParameterDatabaseIOFiltering m_filtering;
    std::vector<std::wstring>* m_notes;
};
