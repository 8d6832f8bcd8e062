// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/type_names.h"

#include <algorithm>
#include <memory>

namespace Zantrel {

/// A default property of that one of the classes whose type name is `typeName`, narrow or wide, or null.
template <class Text, class... T>
std::unique_ptr<IPersistentProperty> CreateProperty(Text const& typeName, PropertyClasses<T...>) {
    std::unique_ptr<IPersistentProperty> created;
    auto const isNamed = [&](std::string_view name) {
        return std::equal(name.begin(), name.end(), typeName.begin(), typeName.end());
    };
    static_cast<void>(
        ((isNamed(TypeName<T>) && (created = std::make_unique<PersistentProperty<T>>(), true)) || ...));
    return created;
}

} // namespace Zantrel
