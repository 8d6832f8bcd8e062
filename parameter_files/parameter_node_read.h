// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_read.h"

/// Reads the root of a generic parameter file, whose tags are the names of nodes. The database of the cursor
/// must outlive the handler.
class ParameterNodeRead : public Zantrel::NodeRead {
public:
    /// With a `validity`, which is borrowed, the file is checked on the way.
    explicit ParameterNodeRead(Zantrel::ParameterNode const& node,
                               Zantrel::ParameterFileValidity* validity = nullptr);

    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

    /// Neither takes any: HandleTag is to see them all. So no group of a read that failed is left open here.
    bool HandleLeaf(std::string_view, std::string_view) override { return false; }
    bool HandleGroup(std::string_view) override { return false; }

    /// Whether "GenericParameters" came where this handler reads: in the root, or in an element there that
    /// was not taken.
    bool HasMetGenericParameters() const { return m_hasMetGenericParameters; }

private:
    bool m_hasMetGenericParameters = false;
};
