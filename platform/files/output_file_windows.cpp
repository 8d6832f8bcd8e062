// SPDX-License-Identifier: Apache-2.0
#ifdef _WIN32
#include "platform/files/output_file.h"

#include "platform/files/windows_api.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace Zantrel::Files {

namespace {

constexpr int MostNames = 100;
constexpr int MostMoves = 10;
constexpr DWORD PauseBetweenMoves = 50; // milliseconds

NativePath MakeSibling(NativePath const& target) {
    std::random_device source;
    wchar_t name[16];
    std::swprintf(name, std::size(name), L".%08x.new", static_cast<unsigned>(source()));
    std::size_t const slash = target.find_last_of(L"\\/");
    return (slash == NativePath::npos ? NativePath() : target.substr(0, slash + 1)) + name;
}

/// Scanners and indexers open new files for a moment.
bool MayPass(DWORD error) noexcept {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED || error == ERROR_UNABLE_TO_REMOVE_REPLACED ||
           error == ERROR_UNABLE_TO_MOVE_REPLACEMENT;
}

DWORD Move(NativePath const& from, NativePath const& to) noexcept {
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : ::GetLastError();
}

/// Keeps the target's access rights. The old file goes aside first: without a name to go to, a move that
/// fails half way would leave none.
DWORD Replace(NativePath const& target, NativePath const& by, NativePath const& aside) noexcept {
    if (::ReplaceFileW(target.c_str(), by.c_str(), aside.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                       nullptr)) {
        ::DeleteFileW(aside.c_str());
        return ERROR_SUCCESS;
    }
    DWORD const error = ::GetLastError();
    if (error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
        ::MoveFileExW(aside.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
    }
    bool const cannotReplaceHere =
        error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED || error == ERROR_FILE_NOT_FOUND;
    return cannotReplaceHere ? Move(by, target) : error;
}

} // namespace

bool OutputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    if (!native) {
        m_badPath = true;
        return false;
    }
    m_target = *native;
    DWORD const shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const existing = ::CreateFileW(m_target.c_str(), 0, shared, nullptr, OPEN_EXISTING,
                                          FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (existing == INVALID_HANDLE_VALUE) {
        DWORD const error = ::GetLastError();
        return error == ERROR_FILE_NOT_FOUND ? OpenBeside() : Fail(static_cast<int>(error));
    }
    m_targetExists = true;
    bool const onDisk = ::GetFileType(existing) == FILE_TYPE_DISK;
    BY_HANDLE_FILE_INFORMATION information{};
    DWORD error = ERROR_SUCCESS;
    if (onDisk && !::GetFileInformationByHandle(existing, &information)) {
        error = ::GetLastError();
    } else if ((information.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        error = ERROR_ACCESS_DENIED;
    } else if (onDisk) { // the handle is behind all links
        NativePath resolved(32768, L'\0');
        DWORD const size =
            ::GetFinalPathNameByHandleW(existing, resolved.data(), static_cast<DWORD>(resolved.size()), 0);
        resolved.resize(size < resolved.size() ? size : 0);
        m_target = resolved.empty() ? m_target : resolved;
    }
    ::CloseHandle(existing);
    if (error != ERROR_SUCCESS) {
        return Fail(static_cast<int>(error));
    }
    if (onDisk) {
        return OpenBeside();
    }
    HANDLE const handle =
        ::CreateFileW(m_target.c_str(), GENERIC_WRITE, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return Fail(static_cast<int>(::GetLastError()));
    }
    m_handle = handle;
    return true;
}

bool OutputFile::OpenBeside() {
    for (int attempt = 0;; ++attempt) {
        m_temporary = MakeSibling(m_target);
        HANDLE const handle = ::CreateFileW(m_temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                            FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle != INVALID_HANDLE_VALUE) {
            m_handle = handle;
            return true;
        }
        DWORD const error = ::GetLastError();
        if (error != ERROR_FILE_EXISTS || attempt == MostNames) {
            m_temporary.clear();
            return Fail(static_cast<int>(error));
        }
    }
}

bool OutputFile::Write(std::string_view bytes) noexcept {
    while (m_error == 0 && !bytes.empty()) {
        DWORD written = 0;
        auto const size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
        if (!::WriteFile(m_handle, bytes.data(), size, &written, nullptr)) {
            return Fail(static_cast<int>(::GetLastError()));
        }
        if (written == 0) {
            return Fail(ERROR_WRITE_FAULT);
        }
        bytes.remove_prefix(written);
    }
    return m_error == 0;
}

bool OutputFile::Commit() {
    if (m_error != 0 || m_handle == nullptr) {
        return false;
    }
    bool const beside = !m_temporary.empty();
    if (beside && !::FlushFileBuffers(m_handle)) {
        return Fail(static_cast<int>(::GetLastError()));
    }
    bool const closed = ::CloseHandle(m_handle) != 0;
    m_handle = nullptr;
    if (!closed) {
        return Fail(static_cast<int>(::GetLastError()));
    }
    if (!beside) {
        return true;
    }
    NativePath const aside = MakeSibling(m_target);
    for (int attempt = 1;; ++attempt) {
        DWORD const error =
            m_targetExists ? Replace(m_target, m_temporary, aside) : Move(m_temporary, m_target);
        if (error == ERROR_SUCCESS) {
            m_temporary.clear();
            return true;
        }
        if (!MayPass(error) || attempt == MostMoves) {
            return Fail(static_cast<int>(error));
        }
        ::Sleep(PauseBetweenMoves);
    }
}

void OutputFile::CloseAndForget() noexcept {
    if (m_handle != nullptr) {
        ::CloseHandle(m_handle);
    }
    if (!m_temporary.empty()) {
        ::DeleteFileW(m_temporary.c_str());
    }
}

} // namespace Zantrel::Files
#endif
