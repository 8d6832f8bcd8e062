// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/write_report.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Zantrel::Sax {

/// UTF-8 of a document or a host as a wide text to quote: cut with "..." when it is long, and each ill-formed
/// byte as U+FFFD.
std::wstring Excerpt(std::string_view utf8);

/// An element of a path: its tag, and what an attribute calls it, or nothing.
struct PathStep {
    std::string_view tag, name;
};

/// Whether what an element is called stands in an attribute of that name.
constexpr bool NamesElements(std::string_view attribute) {
    return attribute == "Name" || attribute == "uuid" || attribute == "Key";
}
/// So many bytes of such a name are enough to make a path of.
inline constexpr std::size_t LongestName = 60;

/// Appends `Tag` or `Tag "name"`, with a "/" in front where there is something already. Both are cut with
/// "..." where they have more than LongestName bytes.
void AppendStep(PathStep step, std::wstring& path);

/// The path of so many elements, of which `stepOf` gives each by its level from the root on. Of more than 16
/// the middle is "...", so that no path is long and none costs more than that.
template <class StepOf> std::wstring PathOf(std::size_t depth, StepOf const& stepOf) {
    constexpr std::size_t AtEachEnd = 8;
    std::wstring path;
    for (std::size_t level = 0; level < depth; ++level) {
        if (level == AtEachEnd && depth > 2 * AtEachEnd) {
            path.append(L"/...");
            level = depth - AtEachEnd;
        }
        AppendStep(stepOf(level), path);
    }
    return path;
}

/// "sentence (path)", without the path when it is empty.
std::wstring WithPath(std::wstring_view sentence, std::wstring_view path);

/// Empties the report of a write that begins, if there is one; the host's leave stays.
void Restart(WriteReport* report);

/// Notes the text of an element that should hold elements only.
void NoteStrayText(KelSAX::ISAXReader& reader);

} // namespace Zantrel::Sax
