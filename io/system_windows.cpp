// SPDX-License-Identifier: Apache-2.0
#ifdef _WIN32
#define _CRT_RAND_S // asks <stdlib.h> for rand_s, wherever it is included first
#include "io/system.h"

#include "text/unicode.h"

// The system's header without the macros that collide with names of the standard library.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <stdlib.h>
#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace Zantrel::Io {

namespace {

constexpr int MostEntries = 5000; ///< of a folder that are looked at
constexpr int MostMoves = 10;
constexpr DWORD PauseBetweenMoves = 50; // milliseconds
constexpr std::size_t MostOfAPath = 32768;
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE HandleOf(File const& file) noexcept { return reinterpret_cast<HANDLE>(file.Handle()); }

Error LastError() noexcept { return static_cast<Error>(::GetLastError()); }

/// The error of a call that gives 0 when it fails.
Error ErrorOf(BOOL result) noexcept { return result != 0 ? 0 : LastError(); }

/// INVALID_HANDLE_VALUE is File::None.
Error Open(File& file, NativePath const& path, DWORD access, DWORD sharing, DWORD disposition, DWORD flags) {
    file = File(reinterpret_cast<std::intptr_t>(
        ::CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr)));
    return file.IsOpen() ? 0 : LastError();
}

DWORD PieceOf(std::size_t size) noexcept { return static_cast<DWORD>(std::min<std::size_t>(size, 1u << 30)); }

/// Scanners and indexers open new files for a moment, and programs that read a file end.
bool MayPass(Error error) noexcept {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED || error == ERROR_UNABLE_TO_REMOVE_REPLACED ||
           error == ERROR_UNABLE_TO_MOVE_REPLACEMENT || error == ERROR_USER_MAPPED_FILE;
}

Error Move(NativePath const& from, NativePath const& to) noexcept {
    return ErrorOf(
        ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

/// Ends a replacement that got half way, with the old file aside and nothing under the target's name: with
/// the new file, or else with the old one. Where another writer has put its file there meanwhile, that one
/// stays, and the old one is nobody's any more.
Error MoveIntoItsPlace(NativePath const& target, NativePath const& by, NativePath const& aside) noexcept {
    Error const error = Move(by, target);
    bool const isReplaced =
        error == 0 || (!::MoveFileExW(aside.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) &&
                       ::GetLastError() == ERROR_ALREADY_EXISTS);
    if (isReplaced) {
        ::DeleteFileW(aside.c_str());
    }
    return error;
}

/// Keeps the target's access rights. The old file goes aside first: without a name to go to, a move that
/// fails half way would leave none.
Error ReplaceKeepingRights(NativePath const& target, NativePath const& by, NativePath const& aside) noexcept {
    Error const error = ErrorOf(::ReplaceFileW(target.c_str(), by.c_str(), aside.c_str(),
                                               REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr));
    switch (error) {
    case 0:
        ::DeleteFileW(aside.c_str());
        return 0;
    case ERROR_UNABLE_TO_MOVE_REPLACEMENT_2: // the old file is aside, and another writer's may have its place
        return MoveIntoItsPlace(target, by, aside);
    case ERROR_INVALID_FUNCTION: // some file systems can't
    case ERROR_NOT_SUPPORTED:
    case ERROR_FILE_NOT_FOUND: // gone meanwhile
        return Move(by, target);
    default:
        return error;
    }
}

/// With the separator at its end.
NativePath FolderOf(NativePath const& path) { return path.substr(0, path.rfind(L'\\') + 1); }

bool IsOld(FILETIME written) noexcept {
    constexpr ULONGLONG OldAge = 10 * 60 * 10'000'000ull; // ten minutes, in the system's units
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    auto const number = [](FILETIME time) {
        return ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart;
    };
    return number(now) > number(written) + OldAge;
}

bool IsPipe(NativePath const& path) {
    constexpr std::wstring_view Pipes = L"\\\\.\\pipe\\";
    int const size = static_cast<int>(Pipes.size());
    return path.size() > Pipes.size() &&
           ::CompareStringOrdinal(path.data(), size, Pipes.data(), size, TRUE) == CSTR_EQUAL;
}

} // namespace

std::wstring Describe(Error error) {
    wchar_t words[512];
    DWORD const size =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                         static_cast<DWORD>(error), 0, words, static_cast<DWORD>(std::size(words)), nullptr);
    std::wstring text(words, size);
    text.resize(text.find_last_not_of(L".\x3002 \r\n") + 1); // it ends like a line of output
    return text.empty() ? L"error " + std::to_wstring(error) : text;
}

std::optional<NativePath> ToNativePath(std::wstring_view path) {
    std::string utf8;
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos || !Text::AppendUtf8(path, utf8)) {
        return std::nullopt;
    }
    NativePath full(MostOfAPath, L'\0');
    DWORD const size =
        ::GetFullPathNameW(NativePath(path).c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (size == 0 || size >= full.size()) {
        return std::nullopt;
    }
    full.resize(size);
    constexpr std::size_t LongestShort = 240; // leaves room for a temporary sibling's name
    if (size <= LongestShort || full.compare(0, 4, L"\\\\?\\") == 0 || full.compare(0, 4, L"\\\\.\\") == 0) {
        return full;
    }
    // Beyond MAX_PATH only the extended form is taken.
    return full.compare(0, 2, L"\\\\") == 0 ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::wstring FromNativePath(NativePath const& path) { return path; }

bool Exists(NativePath const& path, Error& error) {
    File file;
    error = Open(file, path, 0, ShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    for (Error const absent : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME,
                               ERROR_BAD_PATHNAME, ERROR_BAD_NETPATH, ERROR_BAD_NET_NAME}) {
        error = error == absent ? 0 : error;
    }
    return file.IsOpen();
}

Error RandomBits(std::uint32_t& bits) noexcept {
    unsigned drawn = 0;
    bool const areThere = ::rand_s(&drawn) == 0;
    bits = drawn;
    return areThere ? 0 : ERROR_GEN_FAILURE; // it tells no cause
}

Error File::OpenToRead(NativePath const& path) { // without the flag that opens folders
    return Open(*this, path, GENERIC_READ, ShareAll, OPEN_EXISTING,
                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
}

Error File::Read(char* into, std::size_t size, std::size_t& got) noexcept {
    DWORD read = 0;
    Error const error = ErrorOf(::ReadFile(HandleOf(*this), into, PieceOf(size), &read, nullptr));
    got = read;
    return error == ERROR_BROKEN_PIPE ? 0 : error; // a pipe's writer has gone: its end
}

Error File::Write(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!::WriteFile(HandleOf(*this), bytes.data(), PieceOf(bytes.size()), &written, nullptr)) {
            return LastError();
        }
        if (written == 0) {
            return ERROR_WRITE_FAULT;
        }
        bytes.remove_prefix(written);
    }
    return 0;
}

Error File::EndHere() noexcept { return ErrorOf(::SetEndOfFile(HandleOf(*this))); }

Error File::Flush() noexcept { return ErrorOf(::FlushFileBuffers(HandleOf(*this))); }

Error File::Close() noexcept {
    std::intptr_t const handle = std::exchange(m_handle, None);
    return handle == None ? 0 : ErrorOf(::CloseHandle(reinterpret_cast<HANDLE>(handle)));
}

// Opened without any right, so that a file which others hold is found all the same. Links are followed by
// asking the handle for its path.
Error Target::Find(NativePath const& path) {
    m_target = path;
    m_isReplaceable = !IsPipe(path);
    if (!m_isReplaceable) { // told by its name alone, for whoever opens a pipe takes it from the next one
        return 0;
    }
    File old;
    Error const error = Open(old, path, 0, ShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (error == ERROR_FILE_NOT_FOUND) {
        DWORD const found = ::GetFileAttributesW(path.c_str());
        bool const isDangling =
            found != INVALID_FILE_ATTRIBUTES && (found & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        return isDangling ? error : 0; // a link that leads nowhere would be replaced itself
    }
    if (error != 0) {
        return error;
    }
    m_exists = true;
    m_isReplaceable = ::GetFileType(HandleOf(old)) == FILE_TYPE_DISK;
    if (!m_isReplaceable) {
        return 0;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    if (!::GetFileInformationByHandle(HandleOf(old), &information)) {
        return LastError();
    }
    if ((information.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        return ERROR_ACCESS_DENIED;
    }
    NativePath behindLinks(MostOfAPath, L'\0');
    DWORD const size = ::GetFinalPathNameByHandleW(HandleOf(old), behindLinks.data(),
                                                   static_cast<DWORD>(behindLinks.size()), 0);
    if (size != 0 && size < behindLinks.size()) { // not on every file system
        m_target.assign(behindLinks, 0, size);
    }
    return 0;
}

Error Target::OpenDirectly(File& file) const {
    return Open(file, m_target, GENERIC_WRITE, ShareAll, OPEN_EXISTING, 0);
}

// A writer shares its new file with nobody, so that it can't be deleted. What stands aside as ".old" is never
// removed: it may be all that is left of its file.
void Target::RemoveLeftovers(bool (*isTemporary)(NativePathView name)) noexcept {
    struct EndSearch {
        void operator()(HANDLE search) const noexcept { ::FindClose(search); }
    };
    try {
        NativePath const folder = FolderOf(m_target);
        WIN32_FIND_DATAW found{};
        HANDLE const first = ::FindFirstFileW((folder + L'*').c_str(), &found);
        if (first == INVALID_HANDLE_VALUE) {
            return;
        }
        std::unique_ptr<void, EndSearch> const search(first);
        for (int left = MostEntries; left > 0; --left) {
            NativePath const path = folder + found.cFileName;
            if (isTemporary(found.cFileName) && path != m_target && IsOld(found.ftLastWriteTime)) {
                ::DeleteFileW(path.c_str());
            }
            left = ::FindNextFileW(search.get(), &found) ? left : 0;
        }
    } catch (std::bad_alloc const&) { // they stay
    }
}

Error Target::CreateBeside(NativePath const& name, File& file) {
    m_temporary = FolderOf(m_target) + name;
    Error const error = Open(file, m_temporary, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    if (error != 0) {
        m_temporary.clear();
        bool const isFolders = error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT;
        m_refusal = m_exists && isFolders ? Refusal::NewFile : Refusal::None;
    }
    return error;
}

bool Target::IsTaken(Error error) noexcept { return error == ERROR_FILE_EXISTS; }

// A file that another program holds open for a moment is tried again. What is tried must therefore leave the
// target and the new file as they were whenever it fails with an error that may pass.
Error Target::Replace() {
    NativePath const aside = m_temporary + L".old";
    for (int move = 1;; ++move) {
        Error const error =
            m_exists ? ReplaceKeepingRights(m_target, m_temporary, aside) : Move(m_temporary, m_target);
        if (error == 0) {
            m_temporary.clear();
        }
        if (!MayPass(error) || move == MostMoves) {
            return error;
        }
        ::Sleep(PauseBetweenMoves);
    }
}

Target::~Target() {
    if (!m_temporary.empty()) {
        ::DeleteFileW(m_temporary.c_str());
    }
}

} // namespace Zantrel::Io
#endif
