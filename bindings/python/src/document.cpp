// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include "errors.h"

namespace ZantrelPython {

// Python reads it, with its own answers to signals and to names that are no UTF-8.
Document DocumentOf(FilePath const& path, Zantrel::ReadLimits const& limits) {
    py::object const bytes = FilesNamed("bytes_unless_file")(StrOf(path.value), limits.m_bytes);
    return {path.value,
            bytes.is_none() ? std::nullopt : std::optional<std::string>(py::cast<std::string>(bytes))};
}

} // namespace ZantrelPython
