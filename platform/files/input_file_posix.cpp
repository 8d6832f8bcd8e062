// SPDX-License-Identifier: Apache-2.0
#ifndef _WIN32
#include "platform/files/input_file.h"

#include "platform/files/native_path.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zantrel::Files {

InputFile::~InputFile() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

bool InputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    if (!native) {
        m_failure = DescribeBadPath(path);
        return false;
    }
    do {
        m_descriptor = ::open(native->c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    } while (m_descriptor < 0 && errno == EINTR);
    int error = m_descriptor < 0 ? errno : 0;
    struct stat status {};
    if (error == 0 && ::fstat(m_descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        error = EISDIR; // opens without complaint, and only reading fails
    }
    if (error != 0) {
        m_failure = DescribeFailure(L"Can't open", path, error);
    }
    return error == 0;
}

std::ptrdiff_t InputFile::Read(char* into, std::size_t size) {
    for (;;) {
        ssize_t const got = ::read(m_descriptor, into, size);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            m_failure = DescribeFailure(L"Can't read", m_path, errno);
        }
        return got;
    }
}

} // namespace Zantrel::Files
#endif
