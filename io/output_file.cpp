// SPDX-License-Identifier: Apache-2.0
#include "io/output_file.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <new>
#include <utility>

// What may be seen from outside, at any moment and after a crash at any moment: the old file, or the new one
// as a whole, under the target's name. It follows from the order of the steps, each of which is checked, and
// after the first that failed none follows:
//
//     the new file is made beside the target, which nobody else's file is written over for;
//     all bytes are written, then flushed to the disk, then the file is closed, which may report a failure
//     too; it is moved over the target, which the system does as one step; the folder is flushed, so that the
//     move itself lasts.
//
// The new file goes with m_target if it hasn't been moved, for which m_file has to be closed by then: m_file
// is the later member, so it ends first.
namespace Zantrel::Io {

namespace {

// Names are drawn at random: so many that are taken have another cause than chance.
constexpr int MostNames = 100;

constexpr std::size_t DigitsOfAName = 8;

/// Short, so that it fits wherever the target's own name does.
NativePath TemporaryName(std::uint32_t bits) {
    char text[16];
    int const size = std::snprintf(text, sizeof text, ".%08x.new", unsigned{bits});
    return {text, text + size};
}

bool IsTemporaryName(NativePathView name) {
    constexpr char Ending[] = {'.', 'n', 'e', 'w'};
    auto const isDigit = [](auto unit) {
        return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'f');
    };
    return name.size() == 1 + DigitsOfAName + sizeof Ending && name.front() == '.' &&
           std::all_of(name.begin() + 1, name.end() - sizeof Ending, isDigit) &&
           std::equal(name.end() - sizeof Ending, name.end(), Ending);
}

struct LossText {
    Loss loss;
    std::wstring_view text;
};

constexpr LossText LossTexts[] = {
    {OwnerLost, L"The file has another owner or group than before."},
    {AccessListLost, L"The file's access control list isn't kept; its permissions are no wider than before."},
    {AttributesLost, L"Not all extended attributes of the file are kept."},
    {LinksLost, L"Other names of the file (hard links) still have the old content."},
    {DurabilityLost, L"The file's folder can't be flushed: a power loss may bring the old file back."},
};

/// By Target::Refusal.
constexpr std::wstring_view RefusalTexts[] = {
    L"",
    L"no file can be made in its folder, which replacing it as a whole asks for",
    L"no file can be moved over it; it may be mounted by itself, or its folder's rights don't allow it",
};

} // namespace

bool OutputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    m_badPath = !native;
    if (!native || !Check(m_target.Find(*native))) {
        return false;
    }
    m_mayWriteInPlace = m_mayWriteInPlace && m_target.IsReplaceable();
    Error const error = m_target.IsReplaceable() ? OpenBeside() : m_target.OpenDirectly(m_file);
    m_isInPlace = m_mayWriteInPlace && m_target.WhatIsRefused() != Target::Refusal::None;
    m_isOpen = m_isInPlace || Check(error);
    return m_isOpen;
}

// Another writer, or one that crashed, may have the name that was drawn.
Error OutputFile::OpenBeside() {
    m_target.RemoveLeftovers(IsTemporaryName);
    for (int attempt = 1;; ++attempt) {
        std::uint32_t bits = 0;
        if (Error const error = RandomBits(bits)) {
            return error;
        }
        Error const error = m_target.CreateBeside(TemporaryName(bits), m_file);
        if (!Target::IsTaken(error) || attempt == MostNames) {
            return error;
        }
    }
}

bool OutputFile::Check(Error error) noexcept {
    m_error = m_error == 0 ? error : m_error;
    return m_error == 0;
}

bool OutputFile::Write(std::string_view bytes) noexcept {
    if (m_error != 0 || !m_mayWriteInPlace) {
        return m_error == 0 && Check(m_file.Write(bytes));
    }
    try {
        m_bytes.append(bytes);
    } catch (std::exception const&) { // of memory or length
        Check(NoMemory);
    }
    return m_error == 0;
}

bool OutputFile::Commit() {
    if (m_error != 0 || !std::exchange(m_isOpen, false)) {
        return false;
    }
    Error error = 0;
    if (!m_isInPlace) {
        error = m_target.IsReplaceable() ? Replace() : m_file.Close();
        m_isInPlace = m_mayWriteInPlace && m_target.WhatIsRefused() != Target::Refusal::None;
    }
    return Check(m_isInPlace ? WriteInPlace() : error);
}

Error OutputFile::Replace() {
    Error error = m_mayWriteInPlace ? m_file.Write(m_bytes) : 0;
    error = error == 0 ? m_file.Flush() : error;
    error = error == 0 ? m_file.Close() : error;
    return error == 0 ? m_target.Replace() : error;
}

// Cut to its length at last: a file that is written over takes no new room where it doesn't grow.
Error OutputFile::WriteInPlace() {
    Error error = m_target.OpenDirectly(m_file);
    m_hasBegunInPlace = error == 0;
    error = error == 0 ? m_file.Write(m_bytes) : error;
    error = error == 0 ? m_file.EndHere() : error;
    error = error == 0 ? m_file.Flush() : error;
    return error == 0 ? m_file.Close() : error;
}

Failure OutputFile::WhyItFailed() const {
    if (m_badPath) {
        return DescribeBadPath(m_path);
    }
    if (m_error == 0) {
        return {};
    }
    std::wstring_view const why = RefusalTexts[static_cast<std::size_t>(m_target.WhatIsRefused())];
    return DescribeFailure(L"Can't write", m_path, m_error,
                           m_hasBegunInPlace ? L"in place, so that it may hold a part of the new content"
                                             : why);
}

std::vector<std::wstring> OutputFile::Notes() const noexcept {
    try {
        if (m_isInPlace) { // the file itself was written: it has all that it had
            return {L"The file was written in place: a failure meanwhile would have left a part of it."};
        }
        std::vector<std::wstring> notes;
        for (LossText const& row : LossTexts) {
            if ((m_target.Losses() & row.loss) != 0) {
                notes.emplace_back(row.text);
            }
        }
        return notes;
    } catch (std::bad_alloc const&) {
        return {};
    }
}

bool WriteWholeFile(std::wstring const& path, std::string_view bytes) {
    OutputFile file;
    return file.Open(path) && file.Write(bytes) && file.Commit();
}

} // namespace Zantrel::Io
