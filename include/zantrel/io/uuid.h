// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>

namespace KelSDK {

/// A new random identifier (version 4) as 36 lower-case characters. Unique per call, from any thread. Throws
/// std::system_error where the system has no random bits.
ZANTREL_EXPORT std::wstring CreateUUID_t();

} // namespace KelSDK
