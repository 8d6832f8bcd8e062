// SPDX-License-Identifier: Apache-2.0
//
// The program of one target, with the entry points that libFuzzer and its like call.

#include "fuzz/target.h"
#include "fuzz/xml_mutator.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

Fuzz::Target const& TheTarget() {
    static Fuzz::Target const target = [] {
        std::vector<Fuzz::Target> const all = Fuzz::AllTargets();
        return *std::find_if(all.begin(), all.end(),
                             [](Fuzz::Target const& one) { return one.name == ZANTREL_FUZZ_TARGET; });
    }();
    return target;
}

} // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const bytes(data, data + size);
    std::string const fault = TheTarget().faultOf(bytes, Fuzz::ShareOf(bytes));
    if (!fault.empty()) {
        std::fprintf(stderr, "%s: %s\n%s\n", ZANTREL_FUZZ_TARGET, fault.c_str(), bytes.c_str());
        std::abort();
    }
    return 0;
}

/// Two times of three a document's elements change, otherwise its bytes.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    static Fuzz::Words const words(TheTarget().example);
    std::minstd_rand random(seed);
    if (words.elements.empty() || random() % 3 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    std::string const before(data, data + size);
    std::string document = Fuzz::Mutated(before, words, random);
    if (document == before) {
        auto const any = static_cast<std::ptrdiff_t>(random() % words.elements.size());
        document = *std::next(words.elements.begin(), any);
    }
    if (document.size() > maxSize) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    std::memcpy(data, document.data(), document.size());
    return document.size();
}
