// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/layout_files/layout_formats.h"
#include "tests/support/document_text.h"

#include <gtest/gtest.h>

#include <span>

namespace TestSupport {

/// The content of the root, what it makes of a new layout, and what is reported.
struct ReadingCase {
    std::string content;
    char const* outline;
    char const* reported = "";
};

/// In documents "@L" and "@P" mark the container of a list and of profiles, and "N" is a "PropertyNode".
inline std::string Document(std::string const& content) {
    constexpr char const* shorthands[][2] = {
        {"@L", "Type='ListContainer'"}, {"@P", "ProfilesXMLName=''"}, {"(</?)N\\b", "$1PropertyNode"}};
    return "<R xmlns:p='u'>" + Expanded(content, shorthands) + "</R>";
}

/// Reads each from the middle of a stream. All stand in `section`, whose node is `anchor`, or
/// in the root.
inline void ExpectOutlines(LayoutFormat const& format, std::span<ReadingCase const> rows,
                           std::string const& section = "", std::string const& anchor = "") {
    for (ReadingCase const& row : rows) {
        std::string const document = Document(
            section.empty() ? row.content : '<' + section + '>' + row.content + "</" + section + '>');
        ParameterLayout layout;
        ReadReport report;
        std::istringstream in("passed over" + document);
        in.ignore(11);
        EXPECT_TRUE(format.readStream(layout, in, &report));
        EXPECT_EQ(OutlineOfChanges(layout), anchor.empty() ? row.outline : anchor + '{' + row.outline + '}')
            << row.content;
        EXPECT_EQ(Reported(report), row.reported) << row.content;
    }
}

} // namespace TestSupport
