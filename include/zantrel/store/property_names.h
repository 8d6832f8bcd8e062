// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>

/// The names by which stores of properties tell what they describe.
namespace KelAM {

namespace PropertyNames {
extern ZANTREL_EXPORT std::wstring const PartName;
extern ZANTREL_EXPORT std::wstring const ObjectType;
} // namespace PropertyNames

/// Values of the property ObjectType.
namespace ObjectTypes {
extern ZANTREL_EXPORT std::wstring const ObjectTypePartInstance;
extern ZANTREL_EXPORT std::wstring const ObjectTypePlatform;
extern ZANTREL_EXPORT std::wstring const ObjectTypeUniquePart;
} // namespace ObjectTypes

} // namespace KelAM
