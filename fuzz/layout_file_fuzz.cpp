// SPDX-License-Identifier: Apache-2.0
//
// Makes a document of the words of the layout formats, led by the bytes, and does with it in both formats all
// that a host can do.

#include "tests/layout_files/hostile_layout.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::uint8_t const* const end = data + size;
    std::string const document = TestSupport::HostileDocument([&](std::size_t below) {
        std::size_t const high = data != end ? *data++ : 0;
        return (high * 256 + (below > 256 && data != end ? *data++ : high)) % below;
    });
    for (TestSupport::LayoutFormat const& format : TestSupport::LayoutFormats) {
        std::string const fault = TestSupport::FaultOf(format, document);
        if (!fault.empty()) {
            std::fprintf(stderr, "%s, %s:\n%s\n", format.name, fault.c_str(), document.c_str());
            std::abort();
        }
    }
    return 0;
}
