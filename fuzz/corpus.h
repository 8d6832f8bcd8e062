// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "fuzz/target.h"

#include <fstream>

namespace Fuzz {

/// The inputs in a file of a corpus, each behind a line with the number of its bytes, and before a line end.
inline std::vector<std::string> InputsIn(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::string> inputs;
    for (std::size_t size = 0; in >> size && in.get() == '\n';) {
        inputs.emplace_back(size, '\0');
        in.read(inputs.back().data(), static_cast<std::streamsize>(size));
    }
    return inputs;
}

/// What is wrong with an input of the target's corpus, whatever its share, and the input, or nothing.
inline std::string FaultInCorpus(Target const& target) {
    std::vector<std::string> const inputs = InputsIn(ZANTREL_TESTS "/../fuzz/corpora/" + target.name);
    for (std::string const& input : inputs) {
        for (unsigned share = 0; share < Shares; ++share) {
            if (std::string const fault = target.faultOf(input, share); !fault.empty()) {
                return fault + ":\n" + input;
            }
        }
    }
    return inputs.size() < 10 ? "no corpus" : "";
}

} // namespace Fuzz
