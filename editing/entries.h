// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>
#include <zantrel/store/indexed_properties.h>

#include <cstddef>
#include <optional>
#include <string>

/// What the operations on profiles and on items have in common.
namespace Zantrel::Editing {

using ItemProperty = PersistentProperty<IndexedProperties<PersistentProperties>>;

/// The cursor on an entry of a container, as GetListNode and GetProfile give it.
ParameterNode CursorOn(Place const& container, PersistentProperties* entry);

/// What holds a list's items; null where there are none yet.
ItemProperty* FindItems(Place const& list);

/// The number of items, or of profiles without the default one.
std::size_t SizeOf(PlaceView const& container);

/// That a place isn't a list, or a profile list, as a whole.
std::optional<Finding> AgainstKind(PlaceView const& place, PlaceKind kind);
/// What doesn't let a user change what stands at a place or in it.
std::optional<Finding> AgainstChanging(PlaceView const& place);
/// What doesn't let a user add one more entry to a container, or take one away: read-only, the layout's
/// permission, the container's flag, the number of entries.
std::optional<Finding> AgainstAdding(Place const& container);
std::optional<Finding> AgainstRemoving(Place const& container);
/// Something else that a user isn't allowed: `reason` is a sentence.
Finding NotAllowed(PlaceView const& place, std::wstring reason);

/// The first finding that one of the checks has, which are asked in turn.
template <class... Checks> std::optional<Finding> FirstOf(Checks const&... checks) {
    std::optional<Finding> finding;
    static_cast<void>(((finding = checks()).has_value() || ...));
    return finding;
}

/// The place of an entry that is still to be made: made before it, so that nothing can fail once it stands.
class EntryPlace {
public:
    static Place OfItem(Place const& list, std::size_t index);
    static Place OfProfile(Place const& list, std::wstring name);
    static void SetBag(Place& entry, PersistentProperties& bag) noexcept {
        entry.m_steps.back().cursor.m_pProperties = &bag;
    }

private:
    static Place In(Place const& container, PlaceKind kind);
};

} // namespace Zantrel::Editing
