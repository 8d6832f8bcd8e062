// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace Zantrel {

/// The words with which the library itself names entries of a database's bags. Never destroyed, so that a bag
/// with static lifetime may outlive everything else.
struct ReservedNames {
    std::wstring const value = L"Value";
    std::wstring const readOnly = L"ReadOnly";
    std::wstring const hidden = L"Hidden";
    std::wstring const nameReadOnly = L"NameReadOnly";
    std::wstring const canBeDeleted = L"CanBeDeleted";
    std::wstring const userDefaultProfile = L"UserDefaultProfile";
    std::wstring const disableAddRemove = L"DisableAddRemove";
    std::wstring const defaultProfile = L"::DefaultProfile::";

    /// The reserved name of this text, or null.
    /// Looks at each of them, for they are few.
    std::wstring const* Find(std::wstring_view text) const noexcept;
};

/// One for the whole program, so that these names are told by their addresses.
ReservedNames const& Reserved() noexcept;

} // namespace Zantrel
