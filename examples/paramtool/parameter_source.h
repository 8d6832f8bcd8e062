// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "places.h"

#include <zantrel/zantrel.h>

#include <string>
#include <vector>

namespace Paramtool {

enum class ParameterFormat { Generic, Machine };

ParameterFormat FormatOf(std::wstring const& path);

/// A parameter file of either format with the database that it was read into.
class ParameterFile {
public:
    /// Fails when the file can't be read. The layout must outlive this.
    ParameterFile(Zantrel::ParameterLayout const& layout, std::wstring const& path);

    std::wstring m_path;
    ParameterFormat m_format;
    Zantrel::ParameterDatabase m_database;
    std::vector<std::wstring> m_passedOver; ///< by the read, as LinesOf says it

    /// The leaf of that path. Fails when there is none.
    Zantrel::ParameterNode Find(std::wstring const& path);

    /// Writes the database, whole or not at all, and says how what can be read back differs from it.
    std::vector<Change> Write(std::wstring const& path, ParameterFormat format);
};

} // namespace Paramtool
