// SPDX-License-Identifier: Apache-2.0
#ifdef _WIN32
#include "platform/files/input_file.h"

#include "platform/files/native_path.h"
#include "platform/files/windows_api.h"

#include <algorithm>

namespace Zantrel::Files {

InputFile::~InputFile() {
    if (m_handle != nullptr) {
        ::CloseHandle(m_handle);
    }
}

bool InputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    if (!native) {
        m_failure = DescribeBadPath(path);
        return false;
    }
    HANDLE const handle =
        ::CreateFileW(native->c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE) { // also for a folder
        m_failure = DescribeFailure(L"Can't open", path, static_cast<int>(::GetLastError()));
        return false;
    }
    m_handle = handle;
    return true;
}

std::ptrdiff_t InputFile::Read(char* into, std::size_t size) {
    DWORD got = 0;
    auto const wanted = static_cast<DWORD>(std::min<std::size_t>(size, 1u << 30));
    if (!::ReadFile(m_handle, into, wanted, &got, nullptr)) {
        DWORD const error = ::GetLastError();
        if (error == ERROR_BROKEN_PIPE) { // a pipe's writer has gone: its end
            return 0;
        }
        m_failure = DescribeFailure(L"Can't read", m_path, static_cast<int>(error));
        return -1;
    }
    return static_cast<std::ptrdiff_t>(got);
}

} // namespace Zantrel::Files
#endif
