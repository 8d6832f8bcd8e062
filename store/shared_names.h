// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_name.h"

#include <zantrel/text/string_conversion.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Zantrel {

/// Makes the names of one tree of bags while it is read: each text stands once, however many entries bear it.
/// Its texts are counted, so the names may outlive it; they must stay within the tree that they were made
/// for.
class SharedNames {
public:
    /// A text that was asked for before costs a look-up and no conversion. Throws std::bad_alloc.
    EntryName operator()(std::string_view utf8) {
        auto known = m_names.find(utf8);
        if (known == m_names.end()) {
            known = m_names.emplace(utf8, EntryName::Own(StringConversion::Utf8ToNative(utf8))).first;
        }
        return known->second;
    }

private:
    /// Transparent, so that a look-up makes no string.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, EntryName, Hash, std::equal_to<>> m_names;
};

} // namespace Zantrel
