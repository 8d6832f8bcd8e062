// SPDX-License-Identifier: Apache-2.0
//
// Makes a document of the words of each format, led by the bytes, and does with what is read all that a host
// can do.

#include "tests/formats/formats.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    for (TestSupport::Format const& format : TestSupport::Formats()) {
        std::uint8_t const *at = data, *const end = data + size;
        std::string const document = TestSupport::HostileDocument(format.example, [&](std::size_t below) {
            std::size_t const high = at != end ? *at++ : 0;
            return (high * 256 + (below > 256 && at != end ? *at++ : high)) % below;
        });
        std::string const fault = TestSupport::FaultOf(format, document);
        if (!fault.empty()) {
            std::fprintf(stderr, "%s, %s:\n%s\n", format.name, fault.c_str(), document.c_str());
            std::abort();
        }
    }
    return 0;
}
