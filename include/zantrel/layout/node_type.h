// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include <zantrel/macros_away.h>

namespace Zantrel {

/// What a layout node declares. The numbers are part of the interface: hosts store them.
///
/// A node may be given a number that is none of these. It is then written without a type and has no value, as
/// a Group has none.
enum eTypeLayoutNode : std::int32_t {
    Group = 0,               ///< holds other nodes, has no value of its own
    Int = 1,                 ///< std::int32_t
    Double = 2,              ///< double
    Distance = 3,            ///< double, a length
    Bool = 4,                ///< bool
    String = 5,              ///< free text
    Options = 6,             ///< text, a choice among the node's own options
    OptionsFromProfiles = 7, ///< text, the name of a member of a profile list
    FileAbsolute = 8,        ///< text, the path of a file
    FileAttachment = 9,      ///< KelAM::FileContent, a file whose bytes travel with the values
    StandardOptions = 10,    ///< options that the driver supplies; formatting gives it no value
};

} // namespace Zantrel

#include <zantrel/macros_back.h>
