// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_utilities.h>

#include <string>
#include <utility>

namespace Zantrel::Sax {

/// What every format of the library starts from: the root's name and no comments. A format adds its
/// namespaces, and its schema where there is one.
inline KelAM::SaxUtilities::WriteOptions DocumentOptions(std::string rootTag) {
    KelAM::SaxUtilities::WriteOptions options;
    options.m_callerOption = true;
    options.m_firstHeaderText.clear();
    options.m_secondHeaderText.clear();
    options.m_rootTag = std::move(rootTag);
    options.m_callerMode = 0;
    return options;
}

} // namespace Zantrel::Sax
