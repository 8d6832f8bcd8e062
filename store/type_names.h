// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/visit_property.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zantrel {

/// The type name of a property's value, written once for all that makes, names, reads and writes properties.
/// They stand in documents, in the binary form and in the interface, so none can ever change.
template <class T> inline constexpr std::string_view TypeName{};
template <> inline constexpr std::string_view TypeName<std::int32_t> = "integer";
template <> inline constexpr std::string_view TypeName<double> = "double";
template <> inline constexpr std::string_view TypeName<bool> = "bool";
template <> inline constexpr std::string_view TypeName<std::wstring> = "string";
template <> inline constexpr std::string_view TypeName<KelAM::FileContent> = "FileContent";
template <> inline constexpr std::string_view TypeName<PersistentProperties> = "Properties";
template <> inline constexpr std::string_view TypeName<KelAM::SubProperties> = "SubProperties";
template <> inline constexpr std::string_view TypeName<KelAM::ExternalProperties> = "ExternalProperties";
template <>
inline constexpr std::string_view TypeName<IndexedProperties<PersistentProperties>> = "IndexedPropertySets";

/// A class without a name would be written as nothing and read as none.
template <class... T> constexpr bool AllHaveTypeNames(PropertyClasses<T...>) {
    return (!TypeName<T>.empty() && ...);
}
static_assert(AllHaveTypeNames(AllPropertyClasses()));

/// As the interface gives it; the names are ASCII.
template <class T> std::wstring WideTypeName() {
    std::string_view const name = TypeName<T>; // one view, for both of its ends
    return {name.begin(), name.end()};
}

} // namespace Zantrel
