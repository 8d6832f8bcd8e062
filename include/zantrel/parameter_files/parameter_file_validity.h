// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/read_report.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace Zantrel {

/// How far a validity check looks, and what it keeps.
struct ParameterFileValidityOptions {
    ParameterFileValidityOptions(std::size_t maxDepth = 100) : m_maxDepth(maxDepth) {}

    /// The deepest elements that are looked at: the root has depth 0, its children depth 1.
    std::size_t m_maxDepth;
    /// How many messages are kept, and none once their texts take so many bytes. The others are counted, and
    /// the verdict is the same.
    std::size_t m_maxMessages = 10000;
    std::size_t m_maxMessageBytes = std::size_t(16) << 20;
};

/// What a validity check found.
struct ParameterFileValidityResult {
    ParameterFileValidityResult() = default;

    bool m_isValid = true;
    std::vector<std::wstring> m_messages; ///< in the order of discovery, for a person
    std::uint64_t m_leftOut = 0;          ///< how many messages were not kept
};

/// Whether a generic parameter file fits `layout`: its root bears the name of the layout's root, each element
/// is known where it stands, and none is missing that must be there (LayoutNode::m_writeToParameterFile).
/// Elements right below the root, and those of profiles and items, may be missing. Whether values parse isn't
/// looked at, but `report` hears of it, and at last, of a file that can be read, of each element that is
/// missing, at the one that lacks it. Reads into a database of its own, so that nothing of the caller's
/// changes.
///
/// There is one message for each thing that doesn't fit, up to the limits of the options: for an element
/// without content, one for each child that must be there. A layout whose "ProfileEditor" isn't its own, such
/// as a copy, fits no file.
///
/// `report` carries the limits of the read, as for every reader: a file beyond them can't be read. `result`,
/// where given, is replaced. Only a file that can't be read, or isn't well-formed, leaves its
/// messages as they were; it isn't valid either. Throws std::bad_alloc. Any thread, as long as nobody changes
/// `layout`.
ZANTREL_EXPORT bool IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                                         ParameterFileValidityOptions const& options,
                                         ParameterFileValidityResult* result, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool IsValidParameterFile(ParameterLayout const& layout, Path const& path,
                          ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                          ReadReport* report = nullptr) {
    return IsValidParameterFile(layout, WidePath(path), options, result, report);
}
/// The same of what `in` holds from where it stands to its end.
ZANTREL_EXPORT bool IsValidParameterStream(ParameterLayout const& layout, std::basic_istream<char>& in,
                                           ParameterFileValidityOptions const& options,
                                           ParameterFileValidityResult* result, ReadReport* report = nullptr);

namespace KlvrProperties {

/// The same of a machine parameters file. Its root is "KlvrMachineParameters", so that only for a layout
/// whose root has that name it isn't told to be wrong.
ZANTREL_EXPORT bool IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                                         ParameterFileValidityOptions const& options,
                                         ParameterFileValidityResult* result, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool IsValidParameterFile(ParameterLayout const& layout, Path const& path,
                          ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                          ReadReport* report = nullptr) {
    return KlvrProperties::IsValidParameterFile(layout, WidePath(path), options, result, report);
}
ZANTREL_EXPORT bool IsValidParameterStream(ParameterLayout const& layout, std::basic_istream<char>& in,
                                           ParameterFileValidityOptions const& options,
                                           ParameterFileValidityResult* result, ReadReport* report = nullptr);

} // namespace KlvrProperties
} // namespace Zantrel
