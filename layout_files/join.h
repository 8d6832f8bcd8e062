// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Zantrel {

/// The texts that `textOf` gives of the entries, with ";" between them. A ";" inside of one isn't escaped.
template <class Entries, class TextOf> std::wstring Join(Entries const& entries, TextOf textOf) {
    std::wstring joined;
    for (auto const& entry : entries) {
        joined += textOf(entry);
        joined += L';';
    }
    if (!joined.empty()) {
        joined.pop_back();
    }
    return joined;
}

template <class Texts> std::wstring Join(Texts const& texts) {
    return Join(texts, [](std::wstring const& text) -> std::wstring const& { return text; });
}

} // namespace Zantrel
