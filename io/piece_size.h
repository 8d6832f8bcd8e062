// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Io {

/// How many bytes are read from a source, or handed to a sink, at a time: so many that it is asked seldom,
/// but no more than a heap gives again and again and a processor keeps near. The fuzz targets are built with
/// fewer, so that documents of a few kilobytes cross where pieces end, and less memory is mapped for each.
#ifdef ZANTREL_SMALL_PIECES
inline constexpr std::size_t PieceSize = 4096;
#else
inline constexpr std::size_t PieceSize = std::size_t(64) * 1024;
#endif

} // namespace Zantrel::Io
