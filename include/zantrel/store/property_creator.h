// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>

class IPersistentProperty;

/// Makes properties by type name. Any thread.
struct ZANTREL_EXPORT IPersistentPropertyCreator {
    /// A new default property of the class whose GetType is `typeName`, owned by the caller, or null when no
    /// class of the library has that name.
    /// Throws std::bad_alloc only.
    static IPersistentProperty* __CreateProperty(std::wstring const& typeName);
};
