// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/sax_persist.h>

#include <string>

namespace Zantrel {

/// What a writer of parameter files leaves out. A plain value.
struct ZANTREL_EXPORT ParameterDatabaseIOFiltering {
    bool m_exportGeneralParameters = true; ///< write the element "GenericParameters"
    bool m_exportDefaultParameters = true; ///< write the element "Default" of profile lists
};

/// Reads such a choice from a document of any root: each element "ExportGeneralParameters" or
/// "ExportDefaultParameters", at any depth, holds "True" or "False". A flag that is absent or unreadable
/// keeps its value.
class ZANTREL_EXPORT ParameterDatabaseIOFilteringReader : public ISAXPersistHelper {
public:
    /// `filtering` must outlive the reader.
    explicit ParameterDatabaseIOFilteringReader(ParameterDatabaseIOFiltering* filtering)
        : m_filtering(filtering) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    ParameterDatabaseIOFiltering* m_filtering;
};

} // namespace Zantrel
