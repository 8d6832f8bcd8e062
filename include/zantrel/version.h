// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

/// The version of these headers, for the preprocessor and for texts. It is written here and nowhere else:
/// CMake's project(), the packages and the libraries take it from these lines.
#define ZANTREL_VERSION_MAJOR 0
#define ZANTREL_VERSION_MINOR 1
#define ZANTREL_VERSION_PATCH 0

#define ZANTREL_VERSION_JOIN_TEXTS(major, minor, patch) #major "." #minor "." #patch
#define ZANTREL_VERSION_JOIN(major, minor, patch) ZANTREL_VERSION_JOIN_TEXTS(major, minor, patch)

/// "major.minor.patch"
#define ZANTREL_VERSION_STRING                                                                               \
    ZANTREL_VERSION_JOIN(ZANTREL_VERSION_MAJOR, ZANTREL_VERSION_MINOR, ZANTREL_VERSION_PATCH)

namespace Zantrel {

/// The version of the library that the program has loaded, as ZANTREL_VERSION_STRING was when it was built. A
/// host that finds another one there than in its headers runs with a library that was exchanged since. The
/// text is the library's and lives as long as it is loaded. May be called from any thread.
ZANTREL_EXPORT char const* Version() noexcept;

} // namespace Zantrel
