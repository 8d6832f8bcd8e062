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

/// Lets a compiler that can do so, which is clang++, warn of a call whose constant arguments can't be meant.
#if defined(__clang__)
#define ZANTREL_WARN_IF(condition, sentence)                                                                 \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wgcc-compat\"")                    \
        __attribute__((diagnose_if(condition, sentence, "warning"))) _Pragma("clang diagnostic pop")
#else
#define ZANTREL_WARN_IF(condition, sentence)
#endif
