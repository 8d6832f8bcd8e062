// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/external_properties.h>
#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>
#include <zantrel/store/sub_properties.h>

namespace Zantrel {

/// A list of value types, passed about as a type.
template <class... T> struct PropertyClasses {};

/// Every class of property that the library has, the commonest first.
using AllPropertyClasses = PropertyClasses<PersistentProperties, double, std::wstring, std::int32_t, bool,
                                           IndexedProperties<PersistentProperties>, KelAM::FileContent,
                                           KelAM::SubProperties, KelAM::ExternalProperties>;

template <class Class, class Property, class Visitor>
/// Whether it was of the class, and so was visited.
bool VisitIf(bool isOfClass, Property& property, Visitor& visit) {
    using Typed = std::conditional_t<std::is_const_v<Property>, Class const&, Class&>;
    return isOfClass && (visit(static_cast<Typed>(property)), true);
}

template <class Property, class Visitor, class... T>
/// The first class that fits is visited, and no other one.
bool VisitPropertyAs(Property& property, Visitor& visit, PropertyClasses<T...>) {
    std::type_info const& type = typeid(property);
    // By address first: the names are compared only for a host's own class, or where a class has more than
    // one address.
    return (VisitIf<PersistentProperty<T>>(&type == &typeid(PersistentProperty<T>), property, visit) ||
            ...) ||
           (VisitIf<PersistentProperty<T>>(type == typeid(PersistentProperty<T>), property, visit) || ...);
}

/// Calls `visit` with the property as PersistentProperty<T>. False when it is of a class of the host's own,
/// also of one that derives from these: what such a property holds, and how it is copied, only the host
/// knows.
/// A list that lacks a class of the library would make that one the host's own, so there is one list for
/// all.
template <class Property, class Visitor> bool VisitProperty(Property& property, Visitor&& visit) {
    return VisitPropertyAs(property, visit, AllPropertyClasses());
}

} // namespace Zantrel
