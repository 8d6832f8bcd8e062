// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/property_filter.h"

#include "store/type_names.h"

#include <zantrel/store/property_names.h>

#include <type_traits>

using namespace Zantrel;

namespace {

/// What the filter asks of a property's class and type.
enum class Content { Plain, Unwanted, Set, Bag };

template <class T>
constexpr Content ContentOfValue =
    std::is_same_v<T, KelAM::FileContent>     ? Content::Unwanted
    : std::is_same_v<T, KelAM::SubProperties> ? Content::Set
    : std::is_same_v<T, PersistentProperties> || std::is_same_v<T, KelAM::ExternalProperties>
        ? Content::Bag
        : Content::Plain;

/// A host's own class is known by the name alone that it gives its type.
Content ContentOfHost(IPersistentProperty const& property) {
    std::wstring const type = property.GetType();
    if (type == L"PositionMatrix" || type == WideTypeName<KelAM::FileContent>()) {
        return Content::Unwanted;
    }
    if (PropertyCast<KelAM::SubProperties>(&property) != nullptr) {
        return Content::Set;
    }
    bool const isBag = PropertyCast<PersistentProperties>(&property) != nullptr ||
                       PropertyCast<KelAM::ExternalProperties>(&property) != nullptr;
    return isBag ? Content::Bag : Content::Plain;
}

/// Of the library's own classes told without a cast and without making the name of a type for each property.
Content ContentOf(IPersistentProperty const& property) {
    Content content = Content::Plain;
    bool const isKnown = VisitProperty(property, [&content](auto const& typed) {
        content = ContentOfValue<std::decay_t<decltype(typed.m_value)>>;
    });
    return isKnown ? content : ContentOfHost(property);
}

} // namespace

bool BuildTicketPropertyFilter::Filter(std::wstring const& name, IPersistentProperty* property) {
    // The order counts: nothing called like the object type is kept, and a part's name whatever the layout
    // says.
    Content const content = property != nullptr ? ContentOf(*property) : Content::Unwanted;
    if (name == KelAM::PropertyNames::Text::ObjectType || content == Content::Unwanted) {
        return false;
    }
    if (name == KelAM::PropertyNames::Text::PartName || content == Content::Bag) {
        return true;
    }
    if (content == Content::Set) {
        return m_keepSubProperties;
    }
    return m_names == nullptr || m_names->count(name) != 0;
}
