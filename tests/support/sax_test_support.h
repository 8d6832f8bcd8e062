// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_writer.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

/// On Windows in the form that the system takes at any length.
inline std::filesystem::path AtAnyLength(std::filesystem::path const& path) {
#ifdef _WIN32
    return L"\\\\?\\" + path.wstring();
#else
    return path;
#endif
}

/// A folder that goes with its content.
class TemporaryFolder {
public:
    TemporaryFolder()
        : m_path(std::filesystem::temp_directory_path() /
                 ("zantrel-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(m_path);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }

    std::filesystem::path operator/(char const* name) const { return m_path / name; }
    auto CountEntries() const {
        return std::distance(std::filesystem::directory_iterator(m_path),
                             std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path m_path;
};

inline void Fill(std::filesystem::path const& path, std::string const& content) {
    std::ofstream(path, std::ios::binary) << content;
}

inline std::string ContentOf(std::filesystem::path const& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

/// That a text begins so and goes on in the system's words, to one full stop.
inline auto IsSentence(std::wstring const& start) {
    return testing::AllOf(testing::StartsWith(start), testing::SizeIs(testing::Gt(start.size() + 4)),
                          testing::Not(testing::AnyOf(testing::EndsWith(L".."), testing::EndsWith(L"()."))),
                          testing::EndsWith(L"."));
}

/// Hands out a text in pieces.
class PieceBuffer : public std::streambuf {
public:
    PieceBuffer(std::string text, std::size_t piece) : m_text(std::move(text)), m_piece(piece) {}

protected:
    std::streamsize xsgetn(char* into, std::streamsize size) override {
        std::size_t const count =
            std::min({static_cast<std::size_t>(size), m_piece, m_text.size() - m_position});
        m_text.copy(into, count, m_position);
        m_position += count;
        return static_cast<std::streamsize>(count);
    }

private:
    std::string m_text;
    std::size_t m_piece;
    std::size_t m_position = 0;
};

/// Handlers made of one function.
struct ReadingHandler : ISAXPersistHelper {
    std::function<bool(std::string const&, KelSAX::ISAXReader&)> m_handle;

    explicit ReadingHandler(decltype(m_handle) handle) : m_handle(std::move(handle)) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        return m_handle(tag, reader);
    }
};

struct WritingHandler : ISAXPersistHelper {
    std::function<bool(KelSAX::ISAXWriter&)> m_write;

    explicit WritingHandler(decltype(m_write) write) : m_write(std::move(write)) {}
    bool Write(KelSAX::ISAXWriter& writer) const override { return m_write(writer); }
};
