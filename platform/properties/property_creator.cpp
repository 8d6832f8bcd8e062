// SPDX-License-Identifier: Apache-2.0
#include <zantrel/platform/property_creator.h>

#include "platform/properties/create_property.h"

IPersistentProperty* IPersistentPropertyCreator::__CreateProperty(std::wstring const& typeName) {
    return Zantrel::CreateProperty(typeName, Zantrel::AllPropertyClasses()).release();
}
