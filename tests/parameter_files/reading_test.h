// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/document_text.h"
#include "tests/support/dump.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace TestSupport {

/// What a document does to a database and what the report says of it.
struct ReadRow {
    std::string document;
    char const* changes;
    char const* report = ""; ///< kinds and places, as in "text@1:10:Root/G/I"
};

/// `read` takes a database, a document and a report.
template <class Read> void CheckReading(Read const& read, std::initializer_list<ReadRow> rows) {
    SmallLayout const layout;
    for (ReadRow const& row : rows) {
        SCOPED_TRACE(row.document);
        ParameterDatabase database(&layout), silent(&layout);
        ReadReport report;
        bool const isRead = read(database, row.document, &report);
        EXPECT_EQ(isRead, std::string(row.report).find("document@") == std::string::npos);
        EXPECT_EQ(DumpChanges(database), row.changes);
        EXPECT_EQ(Reported(report, true), row.report);
        EXPECT_TRUE(read(silent, row.document, nullptr) == isRead && Dump(silent) == Dump(database));
    }
}

} // namespace TestSupport
