// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/type_names.h"

#include <algorithm>
#include <memory>

namespace Zantrel {

/// Calls `visit` with that one of the classes whose type name is `typeName`, narrow or wide, as a list of
/// that one. Whether there is one.
template <class Text, class Visitor, class... T>
bool VisitClassNamed(Text const& typeName, PropertyClasses<T...>, Visitor const& visit) {
    auto const isNamed = [&](std::string_view name) {
        return std::equal(name.begin(), name.end(), typeName.begin(), typeName.end());
    };
    return ((isNamed(TypeName<T>) && (visit(PropertyClasses<T>()), true)) || ...);
}

/// A default property of that class, or null.
template <class Text, class Classes>
std::unique_ptr<IPersistentProperty> CreateProperty(Text const& typeName, Classes classes) {
    std::unique_ptr<IPersistentProperty> created;
    VisitClassNamed(typeName, classes, [&]<class T>(PropertyClasses<T>) {
        created = std::make_unique<PersistentProperty<T>>();
    });
    return created;
}

} // namespace Zantrel
