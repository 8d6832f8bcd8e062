// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/path.h>

#include "io/system.h"

namespace Zantrel {

#ifndef __wasi__
std::wstring WidePath(StandardPath const& path) { return Io::FromNativePath(path.native()); }
#endif

} // namespace Zantrel
