// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_read.h"

using namespace Zantrel;

namespace {

constexpr ParameterFileGrammar Grammar{ParameterFileWord::Property}; // no flags

} // namespace

ParameterNodeReadKlvrProperties::ParameterNodeReadKlvrProperties(ParameterNode const& node,
                                                                 ParameterFileValidity* validity)
    : NodeRead(node, Grammar, validity) {}
