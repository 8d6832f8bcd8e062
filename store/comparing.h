// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>

namespace Zantrel {

/// The same names in the same order, each with equal values, at any depth. Throws std::bad_alloc.
/// Flags of properties don't count. Neither side may change meanwhile.
bool AreEqual(PersistentProperties const& left, PersistentProperties const& right);
bool AreEqual(IndexedProperties<PersistentProperties> const& left,
              IndexedProperties<PersistentProperties> const& right);

} // namespace Zantrel
