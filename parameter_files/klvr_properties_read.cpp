// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_read.h"

using namespace Zantrel;

// Elements of parameters are all called alike here and bear the name as an attribute, and none has a flag.
// The rest is as in every parameter file, and NodeRead does it.

namespace {

constexpr std::string_view PropertyWords[] = {ParameterFileWord::Type, ParameterFileWord::ProfileList};
constexpr std::string_view ProfileWords[] = {ParameterFileWord::Name};
constexpr ParameterFileGrammar Grammar{.parameterTag = ParameterFileWord::Property, // without flags
                                       .attributes = {.parameter = PropertyWords, .profile = ProfileWords}};

} // namespace

ParameterNodeReadKlvrProperties::ParameterNodeReadKlvrProperties(ParameterNode const& node,
                                                                 ParameterFileValidity* validity)
    : NodeRead(node, Grammar, validity) {}
