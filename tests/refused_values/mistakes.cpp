// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/parameter_layout.h>

#include <utility>

// What compiles and can't be meant gets a warning, here an error, with the words behind each line. Those
// after "clang:" are clang++'s alone.

void Warn(Zantrel::ParameterLayout& first, Zantrel::ParameterLayout& second) {
    Zantrel::ParameterLayout third(std::move(first));   // its anchors stay behind: build it in place
    second = std::move(third);                          // its anchors stay behind: build it in place
    first.AddNode(L"Pulsed", Zantrel::Bool, 1);         // clang: the default of a Bool is true or false
    first.AddNode<double>(L"Pulsed", Zantrel::Bool, 1); // clang: the default of a Bool is true or false
}
