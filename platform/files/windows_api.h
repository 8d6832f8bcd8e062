// SPDX-License-Identifier: Apache-2.0
#pragma once

// The system's header without the macros that collide with the standard library's names.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
