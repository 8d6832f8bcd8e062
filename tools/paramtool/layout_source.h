// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "files.h"

#include <zantrel/zantrel.h>

#include <memory>
#include <string>

namespace Paramtool {

enum class LayoutFormat { Meta, Template };

/// A finished layout: the sample ("sample"), or read from a file in either format ("-": the standard input),
/// with all that the file says.
class LayoutSource {
public:
    /// Fails when the file can't be read or declares no parameters.
    explicit LayoutSource(std::wstring const& source);
    LayoutSource(LayoutSource const&) = delete;
    LayoutSource& operator=(LayoutSource const&) = delete;

    std::wstring m_name; ///< of the file, for people
    std::unique_ptr<Zantrel::ParameterLayout> m_layout;
    Zantrel::ReadReport m_report; ///< of the read
    bool m_isOfTemplate = false;  ///< whose root says nothing of that of parameter files
    Zantrel::ResourceDictionary m_translations;

    /// Fails when the file can't be written.
    void Write(std::wstring const& path, LayoutFormat format) const;
};

} // namespace Paramtool
