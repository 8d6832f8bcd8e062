// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "io/byte_source.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace TestSupport {

/// Gives the tokeniser a text that must outlive it.
class MemorySource : public Zantrel::Io::ByteSource {
public:
    explicit MemorySource(std::string_view bytes) : m_left(bytes) {}
    std::ptrdiff_t Read(char* into, std::size_t size) override {
        size = std::min(size, m_left.size());
        std::memcpy(into, m_left.data(), size);
        m_left.remove_prefix(size);
        return static_cast<std::ptrdiff_t>(size);
    }

private:
    std::string_view m_left;
};

} // namespace TestSupport
