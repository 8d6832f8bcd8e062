// SPDX-License-Identifier: Apache-2.0
#include "platform/files/output_file.h"

namespace Zantrel::Files {

OutputFile::~OutputFile() { CloseAndForget(); }

bool OutputFile::Fail(int systemError) noexcept {
    if (m_error == 0) {
        m_error = systemError;
    }
    return false;
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

} // namespace Zantrel::Files
