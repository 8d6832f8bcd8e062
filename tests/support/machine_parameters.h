// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/sax_test_support.h"

#include <zantrel/parameter_files/machine_parameters_file.h>

#include <gtest/gtest.h>

#include <string>

namespace TestSupport {

/// The bytes of the database's machine parameters file.
inline std::string MachineParameters(Zantrel::ParameterDatabase const& database, bool profileListsOnly) {
    TemporaryFolder const folder;
    Zantrel::KlvrProperties::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    EXPECT_TRUE(Zantrel::KlvrProperties::WriteFile(database, (folder / "file").wstring(), options));
    return ContentOf(folder / "file");
}

} // namespace TestSupport
