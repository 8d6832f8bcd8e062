// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/file_content.h>

#include "io/input_file.h"
#include "io/output_file.h"
#include "text/base64.h"

#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/tag_writer.h>

#include <algorithm>
#include <span>
#include <utility>

template class PersistentProperty<KelAM::FileContent>;

namespace KelAM {

namespace {

constexpr std::string_view NameWord = "Name";
constexpr std::string_view DataWord = "Data";
constexpr std::size_t EncodedAtOnce = std::size_t(3) * 16 * 1024; ///< a multiple of three bytes

} // namespace

bool FileContent::LoadFile(std::wstring const& path) {
    // Files travel between platforms, so both separators end a folder.
    std::wstring name = path.substr(path.find_last_of(L"/\\") + 1); // npos + 1 is 0
    std::vector<std::byte> data;
    if (!Zantrel::Io::ReadWholeFile(path, data)) {
        return false;
    }
    m_name = std::move(name);
    m_data = std::move(data);
    return true;
}

bool FileContent::SaveFile(std::wstring const& path) const {
    return Zantrel::Io::WriteWholeFile(
        path, std::string_view(reinterpret_cast<char const*>(m_data.data()), m_data.size()));
}

// Name and bytes come as two children, and either may be missing: the other one is then taken alone.
bool FileContentRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag == NameWord) {
        reader.ReadValue(m_content->m_name);
        return true;
    }
    if (tag == DataWord) {
        // The last piece of a long text, or all of a short one.
        auto const decoder = m_decoder != nullptr ? std::exchange(m_decoder, nullptr)
                                                  : std::make_shared<Zantrel::Text::Base64Decoder>();
        decoder->Add(reader.GetText());
        if (auto data = decoder->Finish()) {
            m_content->m_data = std::move(*data);
        } else {
            reader.NoteDropped(L"The text is no base64 and was passed over.");
        }
        return true;
    }
    return false;
}

bool FileContentRead::HandleTextPiece(std::string const& tag, std::string_view piece) {
    if (tag != DataWord) {
        return false;
    }
    if (m_decoder == nullptr) {
        m_decoder = std::make_shared<Zantrel::Text::Base64Decoder>();
    }
    m_decoder->Add(piece);
    return true;
}

// Piece by piece, for the text of a large file is larger yet. Without bytes there is one piece, which is
// empty.
bool FileContentWrite::Write(KelSAX::ISAXWriter& writer) const {
    {
        MSAXTagWriter name(writer, NameWord);
        writer.WriteValue(std::wstring_view(m_content->m_name));
    }
    MSAXTagWriter data(writer, DataWord);
    std::span<std::byte const> left = m_content->m_data;
    do {
        auto const piece = left.first(std::min(left.size(), EncodedAtOnce));
        writer.WriteValue(std::string_view(Zantrel::Text::EncodeBase64(piece)));
        left = left.subspan(piece.size());
    } while (!left.empty() && !writer.HasFailed());
    return true;
}

} // namespace KelAM
