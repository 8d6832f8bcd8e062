// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/parameter_node_read.h"

#include "text/unicode.h"

using namespace Zantrel;

namespace {

// A profile's "Hidden" is written and not read, and a "Default" has no attributes for the reader: files rely
// on neither.
constexpr FlagAttribute ParameterFlags[] = {Flag::DisableAddRemove, Flag::ReadOnly, Flag::Hidden};
constexpr FlagAttribute ProfileFlags[] = {Flag::NameReadOnly, Flag::CanBeDeleted, Flag::UserDefaultProfile,
                                          Flag::ReadOnly};
constexpr FlagAttribute ItemFlags[] = {Flag::ReadOnly, Flag::Hidden};
constexpr std::string_view OrdinaryWords[] = {ParameterFileWord::ReadOnly, ParameterFileWord::Hidden};
constexpr std::string_view ProfileWords[] = {
    ParameterFileWord::Name,         ParameterFileWord::ReadOnly,     ParameterFileWord::Hidden,
    ParameterFileWord::NameReadOnly, ParameterFileWord::CanBeDeleted, ParameterFileWord::UserDefaultProfile};
constexpr ParameterFileGrammar Grammar{.parameterTag = {},
                                       .parameterFlags = ParameterFlags,
                                       .profileFlags = ProfileFlags,
                                       .itemFlags = ItemFlags,
                                       .attributes = {.root = OrdinaryWords,
                                                      .defaultProfile = std::span(ProfileWords).subspan(1),
                                                      .profile = ProfileWords,
                                                      .item = OrdinaryWords}};

} // namespace

ParameterNodeRead::ParameterNodeRead(ParameterNode const& node, ParameterFileValidity* validity)
    : NodeRead(node, Grammar, validity) {}

/// By the tag alone, also of one that isn't taken: what counts is whether a writer has left the element out.
bool ParameterNodeRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    m_hasMetGenericParameters =
        m_hasMetGenericParameters || Text::EqualsUtf8(ParameterFileWord::GenericParameters, tag);
    return NodeRead::HandleTag(tag, reader);
}
