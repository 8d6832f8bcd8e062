// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// The names by which stores of properties tell what they describe. A host's globals can count on them, in
/// whatever order a program's globals are made.
namespace KelAM {

namespace PropertyNames {

/// The same texts for those who can't wait until globals are made, as the library itself.
namespace Text {
inline constexpr std::wstring_view PartName = L"PartName";
inline constexpr std::wstring_view ObjectType = L"ObjectType";
} // namespace Text

inline std::wstring const PartName{Text::PartName};
/// The property whose value is one of ObjectTypes below.
inline std::wstring const ObjectType{Text::ObjectType};

} // namespace PropertyNames

/// Values of the property ObjectType.
namespace ObjectTypes {

namespace Text {
inline constexpr std::wstring_view PartInstance = L"PartInstance";
inline constexpr std::wstring_view Platform = L"Platform";
inline constexpr std::wstring_view UniquePart = L"UniquePart";
} // namespace Text

/// The same texts, as std::wstring.
inline std::wstring const ObjectTypePartInstance{Text::PartInstance};
inline std::wstring const ObjectTypePlatform{Text::Platform};
inline std::wstring const ObjectTypeUniquePart{Text::UniquePart};

} // namespace ObjectTypes

} // namespace KelAM
