// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "terminal.h"

#include <zantrel/editing/finding.h>
#include <zantrel/zantrel.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Paramtool {

using Json = nlohmann::ordered_json;
using Zantrel::Editing::Severity;

/// One thing that is told about a file: "file:line:column: error: sentence (path)", without the parts that it
/// doesn't have.
struct Message {
    Severity severity = Severity::Error;
    std::wstring file;
    std::uint64_t line = 0, column = 0; ///< from 1; 0 where no place is known
    std::wstring sentence;
    std::wstring path;

    std::wstring Line() const;
};

Message MessageOf(std::wstring const& file, Zantrel::ReadReport::Entry const& entry);
Message MessageOf(std::wstring const& file, Zantrel::Editing::Finding const& finding);

/// What a run says: lines for people, or with --json one document for programs, which is printed at the end.
/// What people get of it is written at once.
class Output {
public:
    bool m_isJson = false;
    /// The members of a command's own, for programs; looked at with m_isJson only.
    Json m_json = Json::object();

    /// A line of the result, for people.
    void Print(std::wstring const& line, Style style = Style::Plain) const;
    /// What is told about a file on the way: on the standard error, or among "findings".
    void Tell(Message const& message);
    /// The same where it is the result: on the standard output.
    void PrintFinding(Message const& message);
    /// A remark for people only, on the standard error.
    void Remark(std::wstring const& sentence) const;
    /// A change or loss: on the standard error, indented, or among "losses".
    void TellLoss(std::wstring const& line, Json loss);

    /// Prints the document, if it is wanted.
    void Finish(std::string const& command, int status, std::string const& error);

private:
    Json m_findings = Json::array();
    Json m_losses = Json::array();
};

/// A text for a document.
std::string Utf8(std::wstring_view text);
/// The value of a leaf for people; of a text that fills more than a screen its beginning.
std::wstring ShownValue(Zantrel::ParameterView const& leaf);
/// The value of a leaf: a number, flag or text; of an attachment its name, size and checksum; null for none.
Json JsonOf(Zantrel::ParameterView const& leaf);

} // namespace Paramtool
