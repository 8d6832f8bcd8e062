// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_read.h"

/// Reads the root of a machine parameters file, whose "Property" elements name their nodes. The database of
/// the cursor must outlive the handler.
class ParameterNodeReadKlvrProperties : public Zantrel::NodeRead {
public:
    /// With a `validity`, which is borrowed, the file is checked on the way.
    explicit ParameterNodeReadKlvrProperties(Zantrel::ParameterNode const& node,
                                             Zantrel::ParameterFileValidity* validity = nullptr);
};
