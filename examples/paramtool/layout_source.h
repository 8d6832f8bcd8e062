// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "places.h"

#include <zantrel/zantrel.h>

#include <memory>
#include <string>
#include <vector>

namespace Paramtool {

enum class LayoutFormat { Meta, Template };

/// A finished layout: the sample ("sample"), or read from a file in either format.
class LayoutSource {
public:
    /// Fails when the file can't be read or declares no parameters.
    explicit LayoutSource(std::wstring const& source);
    LayoutSource(LayoutSource const&) = delete;
    LayoutSource& operator=(LayoutSource const&) = delete;

    std::unique_ptr<Zantrel::ParameterLayout> m_layout;
    Zantrel::ReadReport m_report; ///< of the read

    /// Fails when the file can't be written.
    void Write(std::wstring const& path, LayoutFormat format) const;

    /// All that the file formats know to say of a layout, and its translations.
    std::vector<Fact> Facts() const;

private:
    Zantrel::ResourceDictionary m_translations;
};

} // namespace Paramtool
