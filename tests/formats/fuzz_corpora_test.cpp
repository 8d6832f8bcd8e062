// SPDX-License-Identifier: Apache-2.0
#include "fuzz/corpus.h"

#include <gtest/gtest.h>

namespace {

class FuzzCorpusOf : public testing::TestWithParam<Fuzz::Target> {};

std::string NameOf(testing::TestParamInfo<Fuzz::Target> const& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, FuzzCorpusOf, testing::ValuesIn(Fuzz::LibraryTargets()), NameOf);

} // namespace

TEST_P(FuzzCorpusOf, HasNoFault) { EXPECT_EQ(Fuzz::FaultInCorpus(GetParam()), ""); }

#ifdef ZANTREL_TESTS_HAVE_EXPAT
TEST(FuzzCorpus, OfTheTokeniserHasNoFault) {
    EXPECT_EQ(Fuzz::FaultInCorpus({"Tokeniser", Fuzz::FaultOfTokeniser, ""}), "");
}
#endif
