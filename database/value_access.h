// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>

namespace Zantrel {

/// The library's own way to values in place, on a cursor as it stands.
struct ValueAccess {
    /// The value of type T, or null where GetValue throws. Good until the value's next end.
    template <class T> static T* Find(ParameterNode const& node) { return node._FindReference<T>(); }
};

} // namespace Zantrel
