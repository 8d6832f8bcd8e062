// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/property_set_words.h"

#include <cstdint>
#include <string_view>

/// The words of a build ticket file, for its reader and its writer. Those of the properties in it stand with
/// the XML form of bags.
namespace Zantrel::TicketWord {

using PropertySetWord::Component;
using PropertySetWord::Instance;
using PropertySetWord::Uuid;

inline constexpr std::string_view Root = "KlvrBuildTicket";
inline constexpr std::string_view Info = "Info";
inline constexpr std::string_view Source = "Source";
inline constexpr std::string_view Defaults = "Defaults";
inline constexpr std::string_view PartOverrides = "PartOverrides";
inline constexpr std::string_view ObjectProperties = "ObjectProperties";

inline constexpr std::string_view Id = "Id";
inline constexpr std::string_view PropertyTemplate = "PropertyTemplate"; ///< written only
inline constexpr std::string_view Kind = "type"; ///< of an instance; of the defaults written only

/// The object kinds that have a word; any other is written without one.
struct ObjectKind {
    std::int32_t kind;
    std::string_view word;
};
inline constexpr ObjectKind ObjectKinds[] = {{1, "build"}, {2, "builditem"}, {3, "object"}, {4, "component"}};

} // namespace Zantrel::TicketWord
