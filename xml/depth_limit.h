// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Xml {

/// How deep elements may nest, in what is read and in what is written, so that nothing is written that can't
/// be read again. The root has depth 1. The tokeniser needs no stack for depth; handlers and what they build
/// do.
inline constexpr std::size_t MaxDepth = 1024;

} // namespace Zantrel::Xml
