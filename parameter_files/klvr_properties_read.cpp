// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_read.h"

using namespace Zantrel;

namespace {

constexpr std::string_view PropertyWords[] = {ParameterFileWord::Type, ParameterFileWord::ProfileList};
constexpr std::string_view ProfileWords[] = {ParameterFileWord::Name};
constexpr ParameterFileGrammar Grammar{.parameterTag = ParameterFileWord::Property, // without flags
                                       .attributes = {.parameter = PropertyWords, .profile = ProfileWords}};

} // namespace

ParameterNodeReadKlvrProperties::ParameterNodeReadKlvrProperties(ParameterNode const& node,
                                                                 ParameterFileValidity* validity)
    : NodeRead(node, Grammar, validity) {}
