// SPDX-License-Identifier: Apache-2.0
// Included by headers that declare names which others have as macros; macros_back.h follows at their end. No
// include guard: each header needs it anew.
//
// <X11/Xlib.h> and the headers it brings define common words as macros. Between these two includes the words
// below are names; after them they are again what the host had. A host that included such headers and wants
// to write Zantrel::eTypeLayoutNode::Bool or Zantrel::ReadLimits::None itself says #undef Bool or #undef None
// first.
#pragma push_macro("BadName")
#pragma push_macro("Bool")
#pragma push_macro("None")
#pragma push_macro("NoValue")
#undef BadName
#undef Bool
#undef None
#undef NoValue
