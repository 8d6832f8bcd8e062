// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dump.h"
#include "tests/support/generated_database.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <thread>

using namespace TestSupport;

namespace {

/// Formats, reads and writes databases of its own; gives all that was written.
std::string Work(ParameterLayout const& layout) {
    std::string all;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        ParameterDatabase written(&layout), back(&layout);
        Generator(seed).FillContent(written.GetProfileEditor());
        ReadReport report;
        bool const isRead = ReadText(back, WriteText(written), &report);
        ReadText(back, "<Root><G><I>no</I></G><U/></Root>", &report);
        all += isRead && report.m_entries.size() == 2 ? WriteText(ParameterDatabase(back)) + Dump(back)
                                                      : "failed";
    }
    return all;
}

} // namespace

TEST(Threads, ShareALayoutAndNothingElse) {
    SmallLayout const layout;
    std::string const expected = Work(layout);
    EXPECT_EQ(expected.find("failed"), std::string::npos);
    std::vector<std::string> results(8);
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&] { result = Work(layout); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::string const& result : results) {
        EXPECT_TRUE(result == expected);
    }
}
