// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/read_report.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <regex>
#include <sstream>
#include <string>

namespace TestSupport {

/// A text in which each shorthand, an expression, has been replaced by what it means, one after the other.
template <std::size_t Count>
std::string Expanded(std::string text, char const* const (&shorthands)[Count][2]) {
    for (auto const& [shorthand, meaning] : shorthands) {
        text = std::regex_replace(text, std::regex(shorthand), meaning);
    }
    return text;
}

/// A document that was written without its first line, line breaks and indentation, in single quotes.
inline std::string Flat(std::string const& document) {
    std::istringstream lines(document);
    std::string text, line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        text += line.substr(line.find_first_not_of(' '));
    }
    std::replace(text.begin(), text.end(), '"', '\'');
    return text;
}

/// The content of the first element `tag` of a flat document; empty where that is an empty element.
inline std::string ContentOfElement(std::string const& flat, std::string const& tag) {
    std::string const startTag = '<' + tag + '>';
    std::size_t const start = flat.find(startTag);
    return start == flat.npos
               ? ""
               : flat.substr(start, flat.find("</" + tag + '>') - start).substr(startTag.size());
}

/// What a report heard: the kind and the element of each entry, as in "untaken X dropped Instance", or with
/// places and what elements are called "untaken@1:10:Root/X".
inline std::string Reported(Zantrel::ReadReport const& report, bool withPlaces = false) {
    char const* const kinds[] = {"file",      "document", "refused", "untaken", "text",
                                 "attribute", "dropped",  "unknown", "passed"};
    std::string text;
    for (Zantrel::ReadReport::Entry const& entry : report.m_entries) {
        std::string const path = StringConversion::NativeToUtf8(entry.path),
                          unnamed = path.substr(
                              0, path.find(" \"", path.rfind('/') == path.npos ? 0 : path.rfind('/')));
        text += (text.empty() ? "" : " ") + std::string(kinds[static_cast<std::size_t>(entry.kind)]);
        text += withPlaces
                    ? '@' + std::to_string(entry.line) + ':' + std::to_string(entry.column) + ':' + path
                    : ' ' + unnamed.substr(unnamed.rfind('/') + 1);
    }
    return text;
}

} // namespace TestSupport
