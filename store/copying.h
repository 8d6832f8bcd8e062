// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/name_copier.h"

#include <zantrel/store/external_properties.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>

namespace Zantrel {

/// Adds copies of all entries of `source`, at any depth, to `target`, an empty bag. On std::bad_alloc
/// `target` holds a part.
void CopyEntries(PersistentProperties& target, PersistentProperties const& source, NameCopier& names);
/// The same for the bags of a sequence.
/// `target` is empty.
void CopyBags(IndexedProperties<PersistentProperties>& target,
              IndexedProperties<PersistentProperties> const& source, NameCopier& names);

/// What a bag of some class says beside its entries; a plain bag says nothing.
/// The entries are copied apart from it.
inline void CopyHead(PersistentProperties&, PersistentProperties const&) {}
inline void CopyHead(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source) {
    target.m_id = source.m_id; // which may fail, so it comes first
    target.m_objectKind = source.m_objectKind;
}

/// Takes all of `made`, which was made for it; what stood in `target` ends with `made`.
void TakeOver(KelAM::ExternalProperties& target, KelAM::ExternalProperties& made) noexcept;
/// Assigns as the operator does, with names from `names`: wholly or, on std::bad_alloc, not at all.
void Assign(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source, NameCopier& names);

} // namespace Zantrel
