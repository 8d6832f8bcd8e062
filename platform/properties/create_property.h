// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/properties/visit_property.h"

#include <memory>
#include <string>

namespace Zantrel {

/// A default property of that one of the classes whose type name is `typeName`, or null.
template <class... T>
std::unique_ptr<IPersistentProperty> CreateProperty(std::wstring const& typeName, PropertyClasses<T...>) {
    std::unique_ptr<IPersistentProperty> created;
    auto const matches = [&](auto* tag) {
        using Class = std::remove_pointer_t<decltype(tag)>;
        if (Class().GetType() != typeName) {
            return false;
        }
        created = std::make_unique<Class>();
        return true;
    };
    static_cast<void>((matches(static_cast<PersistentProperty<T>*>(nullptr)) || ...));
    return created;
}

} // namespace Zantrel
