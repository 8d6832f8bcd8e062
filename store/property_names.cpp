// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/property_names.h>

namespace KelAM {

std::wstring const PropertyNames::PartName = L"PartName";
std::wstring const PropertyNames::ObjectType = L"ObjectType";

std::wstring const ObjectTypes::ObjectTypePartInstance = L"PartInstance";
std::wstring const ObjectTypes::ObjectTypePlatform = L"Platform";
std::wstring const ObjectTypes::ObjectTypeUniquePart = L"UniquePart";

} // namespace KelAM
