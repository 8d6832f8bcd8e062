// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>
#include <zantrel/editing/export.h>

#include <string>

#include <zantrel/macros_away.h>

namespace Zantrel::Editing {

/// How bad it is.
enum class Severity {
    Note,    ///< worth a look; nothing is wrong
    Warning, ///< works, but as a rule not as it was meant
    Error    ///< not allowed by the layout
};

/// What the layout has against a value, an entry or a change.
enum class FindingKind {
    NoNumber,       ///< the text is none, or the value isn't finite
    NoWholeNumber,  ///< the text is no number without a fraction, or not of 32 bits
    NoFlag,         ///< the text is neither true nor false
    NoFile,         ///< the text is no path of a file that can be read
    NoValue,        ///< the place holds no value that could be set
    BelowMinimum,   ///< `limit` is the least value
    AboveMaximum,   ///< `limit` is the greatest value
    NoOption,       ///< none of the layout's options, the first of which `limit` lists
    NoSuchProfile,  ///< `limit` is the name of the profile list
    TooLong,        ///< `limit` is the greatest number of characters
    AgainstPattern, ///< `limit` is the rule in the layout's words, else the pattern
    TooFewItems,    ///< `limit` is the least number
    TooManyItems,   ///< `limit` is the greatest number
    NotUnique,      ///< `limit` is the path of the first other place that has it
    Empty,          ///< nothing allows it to be
    ReadOnly,       ///< by the layout or by a flag
    NotAllowed,     ///< the layout or a flag doesn't let a user do it
    NameInUse,      ///< of a profile; `limit` is the list's path
    BadName,        ///< no name for a profile
    OutOfRange      ///< no item has the index
};

/// One thing to tell, in parts and as a sentence. It owns its texts; the cursor goes stale as cursors do.
struct Finding {
    FindingKind kind = FindingKind::NoNumber;
    Severity severity = Severity::Error;
    std::wstring path; ///< as BasicPlace::GetPath gives it
    ParameterView cursor;
    std::wstring value;    ///< what is objected to: the value or the name
    std::wstring limit;    ///< what it was held against, by the kind
    std::wstring sentence; ///< English, for a person; with the layout's own message where it has one
};

} // namespace Zantrel::Editing

#include <zantrel/macros_back.h>
