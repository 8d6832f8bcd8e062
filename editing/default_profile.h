// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The words for default profiles: each format has its own.
namespace Zantrel::Editing {

/// The bag of a profile list keeps the default profile under this name; no profile can have it.
inline constexpr std::wstring_view DefaultProfileName = L"::DefaultProfile::";
/// By this choices mean it, unless a profile is named so; and its element in files is called so.
inline constexpr std::wstring_view DefaultProfileWord = L"Default";
/// In paths it stands behind the name of the entry, as does the template of a list.
inline constexpr std::wstring_view DefaultProfileStep = L"::Default::";

/// Whether a choice of that value means the default profile, or a profile of that very name.
constexpr bool MeansDefaultProfile(std::wstring_view choice) {
    return choice == DefaultProfileWord || choice == DefaultProfileName;
}

} // namespace Zantrel::Editing
