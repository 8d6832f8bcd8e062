// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/indexed_properties.h>

namespace Zantrel {

/// Gives all entries of these bags, at any depth, names that no other tree shares and no layout owns, so that
/// the bags can go to another tree. On std::bad_alloc some have them, and nothing else has changed. Whether
/// `other` was met on the way, which lies within these bags then.
/// Takes no stack in the depth.
/// The bags must not change meanwhile.
bool OwnNames(IndexedProperties<PersistentProperties>& bags,
              IndexedProperties<PersistentProperties> const& other);

} // namespace Zantrel
