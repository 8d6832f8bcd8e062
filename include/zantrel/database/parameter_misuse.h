// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace Zantrel {

struct LayoutNode;

/// What every operation of a cursor throws that is asked for what its place doesn't have. `what()` is the
/// text that the operation tells, in English and the same on every platform.
class ZANTREL_EXPORT ParameterMisuse : public std::runtime_error {
public:
    /// `node` may be null. Puts the path together at once, which takes time in its depth. Throws
    /// std::bad_alloc.
    ParameterMisuse(char const* text, LayoutNode const* node);
    ParameterMisuse(ParameterMisuse const& other) noexcept;
    ParameterMisuse& operator=(ParameterMisuse const& other) noexcept;
    ~ParameterMisuse() override;

    /// The layout node of the cursor that was asked; null when it had none. Borrowed from the layout.
    LayoutNode const* GetLayoutNode() const noexcept { return m_node; }
    /// The names from below the root of the layout down to that node, joined by "_"; empty for none and for
    /// the root. Entries of containers have no names here. Lives as long as this or a copy of it.
    std::wstring const& GetPath() const noexcept { return *m_path; }

private:
    LayoutNode const* m_node;
    std::shared_ptr<std::wstring const> m_path;
};

} // namespace Zantrel
