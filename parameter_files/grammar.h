// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/vocabulary.h"

#include <zantrel/layout/layout_node.h>

#include <span>
#include <string_view>

namespace Zantrel {

/// What tells the two parameter files apart for a reader. All else they share: a group's element holds its
/// parameters, that of a list its items, and that of a profile list a "Default" and its profiles.
struct ParameterFileGrammar {
    /// The tag of every parameter, whose attribute "Name" then says which one it is, and which may stand
    /// anywhere. Empty: a parameter's tag is its name, and a list is asked for nothing but items.
    std::string_view parameterTag;
    // The flags that an element of each kind is read for, in this order.
    std::span<FlagAttribute const> parameterFlags = {};
    std::span<FlagAttribute const> profileFlags = {};
    std::span<FlagAttribute const> itemFlags = {};
    /// The attributes that an element of each kind can have, whether read or not; of a parameter those that
    /// aren't read.
    struct Attributes {
        std::span<std::string_view const> root = {}, parameter = {}, defaultProfile = {}, profile = {},
                                          item = {};
    };
    Attributes attributes = {};

    bool NamesParametersByAttribute() const { return !parameterTag.empty(); }
};

/// What an element of a document is, beside the place of the layout where it stands.
struct FileElement {
    enum class Kind {
        Default,   ///< the default profile of a profile list
        Entry,     ///< an item or a named profile
        Parameter, ///< `child`
        Nameless,  ///< a parameter that doesn't say which
        Unknown,   ///< a parameter that the layout doesn't have here
        Unhandled, ///< nothing that could be a parameter
    };

    Kind kind;
    LayoutNode const* child = nullptr;
};

} // namespace Zantrel
