// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Xml {

/// How deep elements may nest, in what is read and in what is written. The root has depth 1.
inline constexpr std::size_t MaxDepth = 1024;

} // namespace Zantrel::Xml
