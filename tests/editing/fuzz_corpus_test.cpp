// SPDX-License-Identifier: Apache-2.0
#include "fuzz/corpus.h"

#include <gtest/gtest.h>

TEST(FuzzCorpus, OfEditingHasNoFault) {
    EXPECT_EQ(Fuzz::FaultInCorpus({"Editing", Fuzz::FaultOfEditing, ""}), "");
}
