// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/node_type.h>

#include <string>

namespace Zantrel::Editing {

/// The word of the meta file, and the name of a type that has none there; its number where it is no type.
std::wstring TypeWord(eTypeLayoutNode type);

} // namespace Zantrel::Editing
