// SPDX-License-Identifier: Apache-2.0
#include "platform/files/input_file.h"

namespace Zantrel::Files {

bool ReadWholeFile(std::wstring const& path, std::vector<std::byte>& bytes) {
    InputFile file;
    if (!file.Open(path)) {
        return false;
    }
    constexpr std::size_t Piece = 64 * 1024;
    std::vector<std::byte> content;
    for (;;) {
        std::size_t const size = content.size();
        content.resize(size + Piece);
        std::ptrdiff_t const got = file.Read(reinterpret_cast<char*>(content.data() + size), Piece);
        if (got < 0) {
            return false;
        }
        content.resize(size + static_cast<std::size_t>(got));
        if (got == 0) {
            bytes = std::move(content);
            return true;
        }
    }
}

} // namespace Zantrel::Files
