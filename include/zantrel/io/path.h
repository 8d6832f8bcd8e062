// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>
#include <type_traits>
#ifndef __wasi__
#include <filesystem>
#endif

namespace Zantrel {

#ifndef __wasi__
using StandardPath = std::filesystem::path;
#else
class StandardPath; // the standard library has none there
#endif

/// A path of the standard library as the wide text that the library's functions take. No locale and no code
/// page matters: where paths are bytes they are taken for UTF-8, and on Windows the text stays as it is.
/// Empty for an empty path. A byte that is no UTF-8 becomes the lone surrogate U+DC00 + byte, which no file's
/// path has here: the function that gets it then refuses the path, instead of touching another file. Any
/// thread.
ZANTREL_EXPORT std::wstring WidePath(StandardPath const& path);

/// Constrains the overloads that take a path of the standard library beside those that take a wide text. They
/// are templates, so that whatever converts to both, such as a literal, still means the wide text.
template <class Path> using IfPath = std::enable_if_t<std::is_same_v<Path, StandardPath>, int>;

} // namespace Zantrel
