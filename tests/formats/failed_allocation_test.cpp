// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

using Times = AllocationFailure::Times;

class FailedAllocation : public testing::TestWithParam<std::tuple<Format, Times>> {
protected:
    FailedAllocation() {
        Fill(m_folder / "source", m_format.example);
        EXPECT_TRUE(ReadText(*m_filled, m_format.example));
    }

    Format const& m_format = std::get<0>(GetParam());
    Times const m_times = std::get<1>(GetParam());
    std::unique_ptr<Subject> const m_filled = m_format.make();
    TemporaryFolder const m_folder;
    std::wstring const m_source = (m_folder / "source").wstring();
    std::wstring const m_target = (m_folder / "target").wstring();
};

std::string NameOf(testing::TestParamInfo<std::tuple<Format, Times>> const& info) {
    auto const& [format, times] = info.param;
    return format.name + std::string(times == Times::Once ? "Once" : "FromThenOn");
}
INSTANTIATE_TEST_SUITE_P(, FailedAllocation,
                         testing::Combine(testing::ValuesIn(WrittenFormats()),
                                          testing::Values(Times::Once, Times::FromThenOn)),
                         NameOf);

} // namespace

TEST_P(FailedAllocation, LeaksNothing) {
    EXPECT_GT(FailEachAllocation(
                  [&] {
                      auto const subject = m_filled->Fresh();
                      ReadReport report;
                      subject->ReadFile(m_source, &report);
                      ReadText(*subject, m_format.example + "<U>", &report);
                      subject->Use();
                      WriteText(*subject);
                  },
                  m_times),
              100u);
    EXPECT_GT(FailEachAllocation(
                  [&] {
                      WriteReport report;
                      m_filled->WriteFile(m_target, &report);
                      m_filled->WriteFile((m_folder / "").wstring(), &report);
                  },
                  m_times),
              10u);
}

TEST_P(FailedAllocation, LeavesWhatCanBeUsed) {
    auto subject = m_filled->Fresh();
    auto const check = [&](std::size_t nth, bool completed) {
        auto const back = subject->Fresh();
        EXPECT_TRUE(ReadText(*back, WriteText(*subject))) << nth;
        EXPECT_TRUE(!completed || WriteText(*subject) == WriteText(*m_filled));
        EXPECT_TRUE(ReadText(*subject, m_format.example));
        EXPECT_EQ(subject->Use(), "");
        subject = m_filled->Fresh();
    };
    EXPECT_GT(FailEachAllocation([&] { subject->ReadFile(m_source); }, check, m_times), 10u);
}

TEST_P(FailedAllocation, LeavesTheOldFile) {
    auto const restore = [&] {
        std::filesystem::remove(m_folder / "other");
        Fill(m_folder / "target", "old");
        std::filesystem::create_hard_link(m_folder / "target",
                                          m_folder / "other"); // for a note of the report
    };
    // A write may get through without what failed: a search for leftovers, the notes.
    auto const check = [&](std::size_t, bool completed) {
        EXPECT_EQ(ContentOf(m_folder / "target") == "old", !completed);
        EXPECT_EQ(m_folder.CountEntries(), 3);
        EXPECT_EQ(m_filled->Fresh()->ReadFile(m_target), completed);
        restore();
    };
    restore();
    WriteReport report;
    FailEachAllocation([&] { m_filled->WriteFile(m_target, &report); }, check, m_times);
}
