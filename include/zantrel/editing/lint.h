// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/finding.h>
#include <zantrel/layout/parameter_layout.h>

#include <string>
#include <vector>

#include <zantrel/macros_away.h>

namespace Zantrel::Editing {

/// What is wrong with a layout. Numbers are read as files have them, with a point, whatever the locale.
enum class LintKind {
    SameName,           ///< two siblings; `other` is the first
    BadName,            ///< of a node or an entry: none that every XML reader takes for an element
    FormatWord,         ///< a name that a file format keeps for itself at this place
    BadDefault,         ///< not wholly a value of the node's type
    DefaultOutOfRange,  ///< also of a text, by length or pattern, and of a list's first items, by number
    DefaultNoOption,    ///< and not empty, which stands for the first
    DefaultCut,         ///< its precision shows less than the default has
    BadLimit,           ///< not wholly a value of the node's type
    EmptyRange,         ///< the least value is above the greatest, of values or of a list's items
    NoOptions,          ///< a choice without any, or with one twice
    MissingProfileList, ///< or one that files of the layout won't know
    MissingSource,      ///< a condition's source is null or not in this layout
    OwnSource,          ///< a condition on the node itself, or on one below it
    UnreachedSource,    ///< a condition's source holds no value that the node could see
    BadConditionValue,  ///< one that its source can never have
    Unreached,          ///< no cursor or no file keeps what is there; `other` is what is around it
    TwoContainers,      ///< a list and a profile list in one
    ForeignAnchor,      ///< an anchor of the layout that isn't in its tree, as in a copy
    BadPattern,         ///< none that is understood
    SameIdentifier,     ///< of two nodes; `other` is the first
    SamePropertyName    ///< of two nodes of one section of the ticket; `other` is the first
};

/// One thing that is wrong with a layout. It owns its texts and borrows the layout.
struct LintFinding {
    LintKind kind = LintKind::SameName;
    Severity severity = Severity::Error;
    std::wstring path;                ///< names from below the root, joined by "/"
    LayoutNode const* node = nullptr; ///< null: the layout as a whole
    LayoutNode const* other = nullptr;
    std::wstring value;    ///< what is objected to
    std::wstring sentence; ///< English, for a person
};

/// All that is wrong with a layout, before it is shipped: first of the anchors, then in the order of its
/// nodes. An error is what loses values or makes a file that isn't read back; a warning works otherwise than
/// it was meant. Below a node that isn't reached nothing more is said of values. Takes time in the number of
/// the nodes, options and conditions, and in the depth of the conditions' sources. Throws std::bad_alloc, and
/// as ParameterLayout::CheckAnchors.
ZANTREL_EDITING_EXPORT std::vector<LintFinding> Lint(ParameterLayout const& layout);

} // namespace Zantrel::Editing

#include <zantrel/macros_back.h>
