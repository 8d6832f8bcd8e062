// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/system.h"

#include <sys/stat.h>

namespace Zantrel::Io {

/// Gives the new file `made`, which has no content yet, what the old file under that name in that folder has:
/// owner, group, permissions, access control list and extended attributes (on Linux; elsewhere without the
/// last two). `old` is what the old one's inode says. What can't be given is added to `losses`, and then
/// nobody gets rights by the new file that the old one didn't give. An error when that can't be had.
Error TakeOver(int folder, NativePath const& name, struct stat const& old, int made, unsigned& losses);

} // namespace Zantrel::Io
