// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expat.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace ZantrelBenchmark {

/// A file that is measured, removed at the end.
struct Document {
    std::wstring path;
    std::string text; ///< what Load found in the file

    explicit Document(std::string const& name) {
        std::filesystem::path const shared = "/dev/shm"; // a disk would be measured with the code
        auto const folder = std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path();
        path = (folder / ("zantrel_benchmark_" + name + ".xml")).wstring();
    }
    Document(Document const&) = delete;
    Document& operator=(Document const&) = delete;
    ~Document() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    void Load() {
        std::ostringstream bytes;
        bytes << std::ifstream(std::filesystem::path(path), std::ios::binary).rdbuf();
        text = bytes.str();
    }
};

/// What writing is measured against: values printed by std::to_chars, a line each, in pieces of 256 KiB.
class FlatFile {
public:
    explicit FlatFile(std::wstring const& path)
        : m_file(std::fopen(std::filesystem::path(path).c_str(), "wb")), m_piece(PieceSize) {
        std::setvbuf(m_file, nullptr, _IONBF, 0);
    }
    FlatFile(FlatFile const&) = delete;
    FlatFile& operator=(FlatFile const&) = delete;
    ~FlatFile() {
        Flush();
        std::fclose(m_file);
    }

    void Print(double value) {
        char* const begin = Begin();
        End(std::to_chars(begin, begin + LineRoom, value, std::chars_format::general, 17).ptr);
    }
    void Print(std::int32_t value) {
        char* const begin = Begin();
        End(std::to_chars(begin, begin + LineRoom, value).ptr);
    }
    void Print(std::string_view text) { End(std::copy(text.begin(), text.end(), Begin())); }

private:
    static constexpr std::size_t PieceSize = 256 * 1024;
    static constexpr std::size_t LineRoom = 64;

    char* Begin() {
        if (m_used > PieceSize - LineRoom) {
            Flush();
        }
        return m_piece.data() + m_used;
    }
    void End(char* end) {
        *end++ = '\n';
        m_used = static_cast<std::size_t>(end - m_piece.data());
    }
    void Flush() {
        std::fwrite(m_piece.data(), 1, m_used, m_file);
        m_used = 0;
    }

    std::FILE* m_file;
    std::vector<char> m_piece;
    std::size_t m_used = 0;
};

/// A bare pass of libexpat with empty handlers, the unit that reading is measured in.
inline void PassOfExpat(Document const& document, benchmark::State& state) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(
        parser, [](void*, XML_Char const*, XML_Char const**) {}, [](void*, XML_Char const*) {});
    XML_SetCharacterDataHandler(parser, [](void*, XML_Char const*, int) {});
    if (XML_Parse(parser, document.text.data(), static_cast<int>(document.text.size()), 1) != XML_STATUS_OK) {
        state.SkipWithError("libexpat refuses the file");
    }
    XML_ParserFree(parser);
}

} // namespace ZantrelBenchmark
