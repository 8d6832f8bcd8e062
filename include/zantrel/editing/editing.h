// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What a host does with values and layouts beyond keeping them: all headers of the editing library.

#include <zantrel/editing/choices.h>
#include <zantrel/editing/differences.h>
#include <zantrel/editing/effective_values.h>
#include <zantrel/editing/finding.h>
#include <zantrel/editing/items.h>
#include <zantrel/editing/layout_differences.h>
#include <zantrel/editing/lint.h>
#include <zantrel/editing/look.h>
#include <zantrel/editing/migration.h>
#include <zantrel/editing/place.h>
#include <zantrel/editing/profiles.h>
#include <zantrel/editing/schema.h>
#include <zantrel/editing/validation.h>
#include <zantrel/editing/value_text.h>
