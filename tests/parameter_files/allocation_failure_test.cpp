// SPDX-License-Identifier: Apache-2.0
#include "tests/support/dump.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/sax_test_support.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

class FailedAllocation : public testing::TestWithParam<AllocationFailure::Times> {
protected:
    FailedAllocation() {
        Fill(m_folder / "source", SmallFile);
        EXPECT_TRUE(ReadText(m_filled, SmallFile));
    }

    SmallLayout const m_layout;
    ParameterDatabase m_filled{&m_layout};
    TemporaryFolder const m_folder;
    std::wstring const m_source = (m_folder / "source").wstring();
    std::wstring const m_target = (m_folder / "target").wstring();
};

INSTANTIATE_TEST_SUITE_P(, FailedAllocation,
                         testing::Values(AllocationFailure::Times::Once,
                                         AllocationFailure::Times::FromThenOn));

} // namespace

TEST_P(FailedAllocation, LeaksNothing) {
    EXPECT_GT(FailEachAllocation([&] { ParameterDatabase const formatted(&m_layout); }, GetParam()), 10u);
    EXPECT_GT(FailEachAllocation([&] { ParameterDatabase const copy(m_filled); }, GetParam()), 10u);
    EXPECT_GT(FailEachAllocation(
                  [&] {
                      ParameterDatabase database(&m_layout);
                      ReadReport report;
                      ReadFile(database, m_source, &report);
                      ReadText(database, "<Root><U/><G><I>x</I></G>", &report);
                  },
                  GetParam()),
              50u);
    EXPECT_GT(FailEachAllocation(
                  [&] {
                      WriteReport report;
                      WriteFile(m_filled, m_target, m_source, &report);
                      WriteFile(m_filled, (m_folder / "").wstring(), L"", &report);
                  },
                  GetParam()),
              10u);
}

TEST_P(FailedAllocation, LeavesADatabaseThatCanBeUsed) {
    using Action = std::function<void(ParameterDatabase&)>;
    for (Action const& action : {Action([&](ParameterDatabase& database) { ReadFile(database, m_source); }),
                                 Action([&](ParameterDatabase& database) { database = m_filled; })}) {
        auto database = std::make_unique<ParameterDatabase>(&m_layout);
        auto const check = [&](std::size_t, bool completed) {
            ParameterDatabase back(&m_layout);
            EXPECT_TRUE(ReadText(back, WriteText(*database)));
            EXPECT_TRUE(!completed || Dump(*database) == Dump(m_filled));
            *database = m_filled;
            EXPECT_EQ(Dump(*database), Dump(m_filled));
            database = std::make_unique<ParameterDatabase>(&m_layout);
        };
        EXPECT_GT(FailEachAllocation([&] { action(*database); }, check, GetParam()), 10u);
    }
}

TEST_P(FailedAllocation, LeavesTheOldFile) {
    Fill(m_folder / "target", "old");
    FailEachAllocation([&] { WriteFile(m_filled, m_target, L""); },
                       [&](std::size_t, bool completed) {
                           EXPECT_EQ(ContentOf(m_folder / "target"), completed ? WriteText(m_filled) : "old");
                           EXPECT_EQ(m_folder.CountEntries(), 2);
                       },
                       GetParam());
}
