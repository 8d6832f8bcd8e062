// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The words of a bag in a document, written once for reader and writer.
namespace Zantrel::PropertySetWord {

// Elements. A component is read as a nested set; an instance is the properties of one object outside of a
// database.
inline constexpr std::string_view Property = "Property";
inline constexpr std::string_view Component = "Component";
inline constexpr std::string_view Instance = "Instance";

// Attributes. A property without name or type can't be kept; the mark may be missing, which is no mark.
inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view Type = "Type";
inline constexpr std::string_view Deleted = "Deleted";
inline constexpr std::string_view Uuid = "uuid";

// Words of the attribute "Type" that differ from the property's type name.
// In turn: a bag, a nested set, a sequence of bags, and a double.
inline constexpr std::string_view Complex = "Complex";
inline constexpr std::string_view Complex2 = "Complex2";
inline constexpr std::string_view ComplexArray = "ComplexArray";
inline constexpr std::string_view Number = "number";
inline constexpr std::string_view ProfileName = "ProfileName"; ///< read as a string, never written

} // namespace Zantrel::PropertySetWord
