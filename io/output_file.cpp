// SPDX-License-Identifier: Apache-2.0
#include "io/output_file.h"

#include "io/describe_failure.h"

#include <cstdio>

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

/// Short, so that it fits wherever the target's own name does.
NativePath MakeTemporaryName() {
    char text[16];
    int const size = std::snprintf(text, sizeof text, ".%08x.new", unsigned{RandomBits()});
    return {text, text + size};
}

} // namespace

bool OutputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    m_badPath = !native;
    return native && Check(m_target.Find(*native)) &&
           Check(m_target.IsReplaceable() ? OpenBeside() : m_target.OpenDirectly(m_file));
}

// Another writer, or one that crashed, may have the name that was drawn.
Error OutputFile::OpenBeside() {
    for (int attempt = 1;; ++attempt) {
        Error const error = m_target.CreateBeside(MakeTemporaryName(), m_file);
        if (!Target::IsTaken(error) || attempt == MostNames) {
            return error;
        }
    }
}

bool OutputFile::Check(Error error) noexcept {
    m_error = m_error == 0 ? error : m_error;
    return m_error == 0;
}

bool OutputFile::Write(std::string_view bytes) noexcept { return m_error == 0 && Check(m_file.Write(bytes)); }

bool OutputFile::Commit() {
    if (m_error != 0 || !m_file.IsOpen()) {
        return false;
    }
    if (!m_target.IsReplaceable()) {
        return Check(m_file.Close());
    }
    return Check(m_file.Flush()) && Check(m_file.Close()) && Check(m_target.Replace());
}

std::wstring OutputFile::FailureText() const {
    if (m_badPath) {
        return DescribeBadPath(m_path);
    }
    return m_error != 0 ? DescribeFailure(L"Can't write", m_path, m_error) : std::wstring();
}

bool WriteWholeFile(std::wstring const& path, std::string_view bytes) {
    OutputFile file;
    return file.Open(path) && file.Write(bytes) && file.Commit();
}

} // namespace Zantrel::Io
