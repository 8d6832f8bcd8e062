// SPDX-License-Identifier: Apache-2.0
// Gives the macros back that macros_away.h took.
#pragma pop_macro("NoValue")
#pragma pop_macro("None")
#pragma pop_macro("Bool")
#pragma pop_macro("BadName")
