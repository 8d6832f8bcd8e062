// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dump.h"
#include "tests/support/generated_database.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <future>

using namespace TestSupport;

namespace {

/// Formats, reads and writes databases of its own; gives all that was written.
std::string Work(ParameterLayout const& layout) {
    std::string all;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        ParameterDatabase written(&layout), back(&layout);
        Generator(seed).FillContent(written.GetProfileEditor());
        ReadReport report;
        EXPECT_TRUE(ReadText(back, WriteText(written), &report));
        ReadText(back, "<Root><G><I>no</I></G><U/></Root>", &report);
        EXPECT_EQ(report.m_entries.size(), 2u);
        all += WriteText(ParameterDatabase(back)) + Dump(back);
    }
    return all;
}

} // namespace

TEST(Threads, ShareALayoutAndNothingElse) {
    SmallLayout const known, layout;
    std::string const expected = Work(known);
    std::vector<std::future<std::string>> results;
    for (int count = 0; count < 8; ++count) {
        results.push_back(std::async(std::launch::async, [&] { return Work(layout); }));
    }
    for (std::future<std::string>& result : results) {
        EXPECT_TRUE(result.get() == expected);
    }
}
