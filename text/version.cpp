// SPDX-License-Identifier: Apache-2.0
#include <zantrel/version.h>

namespace Zantrel {

char const* Version() noexcept { return ZANTREL_VERSION_STRING; }

} // namespace Zantrel
