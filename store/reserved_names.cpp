// SPDX-License-Identifier: Apache-2.0
#include "store/reserved_names.h"

#include <array>

namespace Zantrel {

std::wstring const* ReservedNames::Find(std::wstring_view text) const noexcept {
    static constexpr std::array All = {
        &ReservedNames::value,
        &ReservedNames::readOnly,
        &ReservedNames::hidden,
        &ReservedNames::nameReadOnly,
        &ReservedNames::canBeDeleted,
        &ReservedNames::userDefaultProfile,
        &ReservedNames::disableAddRemove,
        &ReservedNames::defaultProfile,
    };
    for (auto member : All) {
        if (this->*member == text) {
            return &(this->*member);
        }
    }
    return nullptr;
}

ReservedNames const& Reserved() noexcept {
    // Left to the end of the process: bags with static lifetime borrow these texts.
    static auto const& names = *new ReservedNames();
    return names;
}

} // namespace Zantrel
