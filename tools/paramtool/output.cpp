// SPDX-License-Identifier: Apache-2.0
//
// The two forms of all that is said. docs/paramtool.md describes the one for programs.

#include "output.h"

#include "common/cursors.h"

#include <cmath>
#include <iostream>
#include <type_traits>

namespace Paramtool {

namespace {

// Each operation says its part in the form that is wanted and nothing in the other one, so that hardly a
// command has to ask which it is. What programs get waits for the end, as a document has one beginning and
// one end.
wchar_t const* WordOf(Severity severity) {
    switch (severity) {
    case Severity::Note:
        return L"note";
    case Severity::Warning:
        return L"warning";
    default:
        return L"error";
    }
}

Style StyleOf(Severity severity) { return severity == Severity::Error ? Style::Red : Style::Plain; }

Json JsonOf(Message const& message) {
    Json json{{"severity", Utf8(WordOf(message.severity))}, {"sentence", Utf8(message.sentence)}};
    if (!message.file.empty()) {
        json["file"] = Utf8(message.file);
    }
    if (message.line != 0) {
        json["line"] = message.line;
        json["column"] = message.column;
    }
    if (!message.path.empty()) {
        json["path"] = Utf8(message.path);
    }
    return json;
}

} // namespace

std::wstring Message::Line() const {
    std::wstring text = file;
    if (line != 0) {
        text += L':' + std::to_wstring(line) + L':' + std::to_wstring(column);
    }
    text += (text.empty() ? L"" : L": ") + std::wstring(WordOf(severity)) + L": " + sentence;
    return path.empty() ? text : text + L" (" + path + L')';
}

Message MessageOf(std::wstring const& file, Zantrel::ReadReport::Entry const& entry) {
    return {Severity::Error, file, entry.line, entry.column, entry.sentence, entry.path};
}

Message MessageOf(std::wstring const& file, Zantrel::Editing::Finding const& finding) {
    return {finding.severity, file, 0, 0, finding.sentence, finding.path};
}

void Output::Print(std::wstring const& line, Style style) const {
    if (!m_isJson) {
        Paramtool::Print(line, style);
    }
}

void Output::Tell(Message const& message) {
    if (m_isJson) {
        m_findings.push_back(JsonOf(message));
    } else {
        PrintError(message.Line());
    }
}

void Output::PrintFinding(Message const& message) {
    if (m_isJson) {
        m_findings.push_back(JsonOf(message));
    } else {
        Paramtool::Print(message.Line(), StyleOf(message.severity));
    }
}

void Output::Remark(std::wstring const& sentence) const {
    if (!m_isJson) {
        PrintError(L"paramtool: " + sentence);
    }
}

void Output::TellLoss(std::wstring const& line, Json loss) {
    if (m_isJson) {
        m_losses.push_back(std::move(loss));
    } else {
        PrintError(L"  " + line);
    }
}

void Output::Finish(std::string const& command, int status, std::string const& error) {
    if (!m_isJson) {
        return;
    }
    Json document{{"paramtool", PARAMTOOL_VERSION}, {"command", command}, {"status", status}};
    if (!error.empty()) {
        document["error"] = error;
    }
    document["findings"] = std::move(m_findings);
    if (!m_losses.empty()) {
        document["losses"] = std::move(m_losses);
    }
    // Behind the members that every command has, in the order in which the command has set its own.
    document.update(m_json);
    // A text that isn't UTF-8, as names of files may be, is no reason to say nothing.
    std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::string Utf8(std::wstring_view text) { return StringConversion::NativeToUtf8(text); }

std::wstring ShownValue(Zantrel::ParameterView const& leaf) {
    constexpr std::size_t longest = 2000;
    auto const* const text = leaf.FindValue<std::wstring>();
    return text == nullptr || text->size() <= longest ? Host::ValueText(leaf)
                                                      : L'"' + text->substr(0, longest) + L"\u2026\", " +
                                                            std::to_wstring(text->size()) + L" characters";
}

Json JsonOf(Zantrel::ParameterView const& leaf) {
    Json json;
    VisitValue(leaf, [&](auto const& value) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::wstring>) {
            json = Utf8(value);
        } else if constexpr (std::is_same_v<T, KelAM::FileContent>) {
            json = Json{{"file", Utf8(value.m_name)}, {"bytes", value.m_data.size()}};
        } else if constexpr (std::is_same_v<T, double>) {
            // The form has no words for what isn't finite; as texts they stay told apart.
            json = std::isfinite(value) ? Json(value) : Json(Utf8(Host::PlainText(leaf)));
        } else {
            json = value;
        }
    });
    return json;
}

} // namespace Paramtool
