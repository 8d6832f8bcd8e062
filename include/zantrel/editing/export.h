// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks what the editing library exports; everything else stays hidden.
#if defined(ZANTREL_EDITING_STATIC)
#define ZANTREL_EDITING_EXPORT
#elif defined(_WIN32)
#if defined(ZANTREL_EDITING_BUILDING)
#define ZANTREL_EDITING_EXPORT __declspec(dllexport)
#else
#define ZANTREL_EDITING_EXPORT __declspec(dllimport)
#endif
#else
#define ZANTREL_EDITING_EXPORT __attribute__((visibility("default")))
#endif
