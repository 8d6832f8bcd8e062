// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The names by which stores of properties tell what they describe. A host's globals can count on them, in
/// whatever order a program's globals are made.
namespace KelAM {

namespace PropertyNames {
inline std::wstring const PartName = L"PartName";
inline std::wstring const ObjectType = L"ObjectType";
} // namespace PropertyNames

/// Values of the property ObjectType.
namespace ObjectTypes {
inline std::wstring const ObjectTypePartInstance = L"PartInstance";
inline std::wstring const ObjectTypePlatform = L"Platform";
inline std::wstring const ObjectTypeUniquePart = L"UniquePart";
} // namespace ObjectTypes

} // namespace KelAM
