// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"

#include <zantrel/io/mfile.h>
#include <zantrel/store/external_properties.h>
#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/sub_properties.h>

#include <span>
#include <stdexcept>

namespace Fuzz {

namespace {

MFile FileOf(std::string_view bytes) {
    auto const all = std::as_bytes(std::span(bytes.data(), bytes.size()));
    return MFile({all.begin(), all.end()});
}

/// What was read is written, read and written the same; what isn't read changes nothing.
template <class T> std::string FaultOfValue(std::string_view bytes) {
    PersistentProperty<T> read, back, untouched;
    MFile file = FileOf(bytes), written, again, before;
    untouched.Write(before);
    try {
        read.Read(file);
    } catch (std::runtime_error const&) {
        read.Write(written);
        return written.GetBytes() == before.GetBytes() ? "" : "what isn't read";
    }
    read.Write(written);
    if (written.GetBytes().size() > 64 * bytes.size() + before.GetBytes().size()) {
        return "so much from so little";
    }
    MFile copy = written;
    back.Read(copy);
    back.Write(again);
    PersistentProperty<T> const assigned(back.m_value);
    return again.GetBytes() == written.GetBytes() && copy.GetRemaining() == 0 ? "" : "what was written";
}

} // namespace

std::string FaultOfBinaryForm(std::string const& bytes, unsigned) {
    static constexpr std::string (*faults[])(std::string_view) = {
        FaultOfValue<PersistentProperties>,
        FaultOfValue<IndexedProperties<PersistentProperties>>,
        FaultOfValue<KelAM::SubProperties>,
        FaultOfValue<KelAM::ExternalProperties>,
        FaultOfValue<KelAM::FileContent>,
        FaultOfValue<std::wstring>,
        FaultOfValue<double>,
        FaultOfValue<std::int32_t>,
        FaultOfValue<bool>};
    std::string_view const all = bytes;
    return all.empty() ? "" : faults[Choices(all).Below(std::size(faults))](all.substr(1));
}

} // namespace Fuzz
