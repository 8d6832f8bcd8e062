// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#if defined(ZANTREL_STATIC)
#define ZANTREL_EXPORT
#elif defined(_WIN32)
#if defined(ZANTREL_BUILDING)
#define ZANTREL_EXPORT __declspec(dllexport)
#else
#define ZANTREL_EXPORT __declspec(dllimport)
#endif
#else
#define ZANTREL_EXPORT __attribute__((visibility("default")))
#endif
