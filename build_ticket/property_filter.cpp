// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/property_filter.h"

#include "platform/properties/type_names.h"

#include <zantrel/platform/property_names.h>

#include <type_traits>

using namespace Zantrel;

namespace {

/// Whether the type alone rules a property out. Of the library's own classes one does, told without making
/// the name of a type for each property; a position is of a class of the host's own.
bool IsOfUnwantedType(IPersistentProperty const& property) {
    bool isFile = false;
    bool const isKnown = VisitProperty(property, [&isFile](auto const& typed) {
        isFile = std::is_same_v<std::decay_t<decltype(typed.m_value)>, KelAM::FileContent>;
    });
    if (isKnown) {
        return isFile;
    }
    std::wstring const type = property.GetType();
    return type == L"PositionMatrix" || type == WideTypeName<KelAM::FileContent>();
}

} // namespace

bool BuildTicketPropertyFilter::Filter(std::wstring const& name, IPersistentProperty* property) {
    // The order counts: a part's name is kept whatever the layout says, and nothing called like the object
    // type is.
    if (name == KelAM::PropertyNames::ObjectType || property == nullptr || IsOfUnwantedType(*property)) {
        return false;
    }
    if (name == KelAM::PropertyNames::PartName) {
        return true;
    }
    if (PropertyCast<KelAM::SubProperties>(property) != nullptr) {
        return m_keepSubProperties;
    }
    bool const isBag = PropertyCast<PersistentProperties>(property) != nullptr ||
                       PropertyCast<KelAM::ExternalProperties>(property) != nullptr;
    return isBag || m_names == nullptr || m_names->count(name) != 0;
}
