// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/store/persistent_property.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Text {
class Base64Decoder;
}

namespace KelAM {

/// A file that travels with the parameters: a name and the bytes. A plain value; a default one is empty in
/// both.
class ZANTREL_EXPORT FileContent {
public:
    FileContent() = default;
    /// Takes both as they are; the name need be none that a file can have.
    FileContent(std::wstring name, std::vector<std::byte> data)
        : m_name(std::move(name)), m_data(std::move(data)) {}

    /// Takes the bytes of the file at `path` and the last part of the path as the name. False, and this
    /// content is as it was, when the file can't be read.
    /// A "/" and a "\" end a folder on every platform, since paths travel with files. On std::bad_alloc this
    /// content is as it was, too.
    bool LoadFile(std::wstring const& path);
    /// The same for a path of the standard library, as Zantrel::WidePath has it.
    template <class Path, Zantrel::IfPath<Path> = 0> bool LoadFile(Path const& path) {
        return LoadFile(Zantrel::WidePath(path));
    }
    /// Writes the bytes to `path`, whole or not at all (docs/saving.md), and never in place. False when that
    /// fails; an old file is then as it was.
    /// The content's name plays no part.
    bool SaveFile(std::wstring const& path) const;
    /// The same for a path of the standard library.
    template <class Path, Zantrel::IfPath<Path> = 0> bool SaveFile(Path const& path) const {
        return SaveFile(Zantrel::WidePath(path));
    }

    /// Whether name and bytes are the same, wherever they came from.
    bool operator==(FileContent const& other) const {
        return m_name == other.m_name && m_data == other.m_data;
    }
    bool operator!=(FileContent const& other) const { return !(*this == other); }

    std::wstring m_name;           ///< the file's name without a folder, as it is shown and written
    std::vector<std::byte> m_data; ///< the file's bytes
};

/// Reads the content of one element, the children "Name" and "Data" (base64), into a content that outlives
/// the handler. Other children are ignored, bad base64 leaves the bytes as they were.
class ZANTREL_EXPORT FileContentRead : public ISAXPersistHelper {
public:
    /// `content` is borrowed and filled child by child: a read that breaks off may leave a new name beside
    /// the old bytes.
    explicit FileContentRead(FileContent& content) : m_content(&content) {}
    /// Takes both children in any order; one that is missing leaves its part as it was. Bad base64 goes to
    /// the read's report.
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;
    /// Decodes the bytes as they come, so that their text never stands in memory as a whole.
    bool HandleTextPiece(std::string const& tag, std::string_view piece) override;

private:
    FileContent* m_content;
    std::shared_ptr<Zantrel::Text::Base64Decoder> m_decoder; ///< of bytes that have begun to come
};

/// Writes such an element's content. The content outlives the handler.
class ZANTREL_EXPORT FileContentWrite : public ISAXPersistHelper {
public:
    /// `content` is borrowed and must not change while the write runs.
    explicit FileContentWrite(FileContent const& content) : m_content(&content) {}
    /// The name first, then the bytes as base64. Gives true; what can't be written fails the writer.
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    FileContent const* m_content;
};

} // namespace KelAM

extern template class ZANTREL_EXPORT PersistentProperty<KelAM::FileContent>;
