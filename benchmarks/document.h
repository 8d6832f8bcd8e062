// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expat.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

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
