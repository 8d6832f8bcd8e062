// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/path.h>

#include "io/system.h"

namespace Zantrel {

std::wstring WidePath(std::filesystem::path const& path) { return Io::FromNativePath(path.native()); }

} // namespace Zantrel
