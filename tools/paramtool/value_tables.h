// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "output.h"

#include <zantrel/zantrel.h>

#include <string>
#include <string_view>
#include <vector>

/// Values of a file as a table for spreadsheets and scripts.
namespace Paramtool {

struct ValueRow {
    std::wstring path;
    std::wstring text;  ///< as Editing::TextOf gives it
    std::wstring where; ///< "values.csv:12" of one that was read, for people
};

/// A header and a line for each value: path, value, unit; in UTF-8 and with CRLF, quoted where it has to be.
std::string CsvOf(Zantrel::ParameterDatabase const& database);
/// {"values": [{"path", "value", "unit"}]}
std::string JsonTextOf(Zantrel::ParameterDatabase const& database);

/// The rows of either; which one it is tells the first character. Fails for what is neither.
std::vector<ValueRow> ReadValues(std::string_view text, std::wstring const& name);

} // namespace Paramtool
