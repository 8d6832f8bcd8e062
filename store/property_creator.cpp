// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/property_creator.h>

#include "store/create_property.h"

// By the one table of type names, which readers and writers use, too.
IPersistentProperty* IPersistentPropertyCreator::__CreateProperty(std::wstring const& typeName) {
    return Zantrel::CreateProperty(typeName, Zantrel::AllPropertyClasses()).release();
}
