// SPDX-License-Identifier: Apache-2.0
// The host's own writer, which its globals call before the constants of this file are made.
#include <zantrel/zantrel.h>

#include <sstream>

std::string WriteEarly() {
    Zantrel::ParameterLayout const layout;
    std::ostringstream out;
    Zantrel::KlvrProperties::WriteStream(Zantrel::ParameterDatabase(&layout), out, {});
    return out.str();
}
