// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/export.h>
#include <zantrel/sample/sample_layout.h>

namespace Zantrel::Sample {

/// A database on the sample layout that can fill itself with a default set of profiles, as a build processor
/// does through cursors. The layout is borrowed and must outlive it. Threads: as for the base.
class ZANTREL_EXPORT ParameterDatabase : public Zantrel::ParameterDatabase {
public:
    /// Holds the layout's defaults until PopulateDefault is called. Null gives an empty database.
    explicit ParameterDatabase(Sample::ParameterLayout const* layout);

    /// Adds to the default category two export ranges and a profile "Default" for each stage, chooses these
    /// profiles, and adds the categories "Default Category" and "Category Advanced" as copies of it.
    ///
    /// Meant for a new database. Called again it adds all of that once more: further ranges, and second
    /// profiles under names that exist, which lookups by name don't reach. Nothing is done without a layout,
    /// on a layout that was copied, as its handles stay in its source, or after assignment to the base has
    /// brought another layout.
    void PopulateDefault();

private:
    Sample::ParameterLayout const* m_pSampleLayout;
};

} // namespace Zantrel::Sample
