// SPDX-License-Identifier: Apache-2.0
#include "value_tables.h"

#include "common/host.h"

#include <zantrel/editing/editing.h>

#include <charconv>
#include <string_view>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using StringConversion::Utf8ToNative;

template <class Take> void ForEachValue(ParameterDatabase const& database, Take take) {
    for (PlaceWalk walk(database); walk.Next();) {
        if (walk.GetPlace().IsLeaf()) {
            take(walk.GetPathBelowTop(), walk.GetPlace());
        }
    }
}

/// Quoted where a reader of the table would else take it for more fields or lines, pass over blanks, or end
/// at a zero.
std::string Field(std::string text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos && text == text.c_str() &&
        (text.empty() || (text.front() != ' ' && text.back() != ' '))) {
        return text;
    }
    for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at + 2)) {
        text.insert(at, 1, '"');
    }
    return '"' + text + '"';
}

/// One record of a CSV document, which may go over several lines; `at` moves behind it.
std::vector<std::string> ReadRecord(std::string_view text, std::size_t& at, std::size_t& lines,
                                    std::wstring const& where) {
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (; at < text.size(); ++at) {
        char const c = text[at];
        lines += c == '\n' ? 1 : 0;
        if (isQuoted) {
            if (c != '"') {
                fields.back() += c;
            } else if (at + 1 < text.size() && text[at + 1] == '"') {
                fields.back() += text[++at];
            } else {
                isQuoted = false;
            }
        } else if (c == '"') {
            isQuoted = true;
        } else if (c == ',') {
            fields.emplace_back();
        } else if (c == '\n') {
            ++at;
            break;
        } else if (c != '\r') {
            fields.back() += c;
        }
    }
    if (isQuoted) {
        // All that follows would be in this field, and be set, of a table that breaks off.
        Host::Fail(where + L": a field begins with a quotation mark that none ends");
    }
    return fields;
}

/// Takes also what a spreadsheet makes of a table: line ends of either kind, further columns, empty lines.
/// The header may be missing.
std::vector<ValueRow> ReadCsv(std::string_view text, std::wstring const& name) {
    std::vector<ValueRow> rows;
    std::size_t line = 0;
    for (std::size_t at = 0; at < text.size();) {
        std::wstring const where = name + L':' + std::to_wstring(line + 1);
        std::vector<std::string> const fields = ReadRecord(text, at, line, where);
        if (fields.size() == 1 && fields.front().empty()) {
            continue;
        }
        if (fields.size() < 2) {
            Host::Fail(where + L": a path and a value are wanted");
        }
        if (!rows.empty() || fields[0] != "path" || fields[1] != "value") { // the header
            rows.push_back({Utf8ToNative(fields[0]), Utf8ToNative(fields[1]), where});
        }
    }
    return rows;
}

/// As Editing::TextOf has it.
std::wstring TextOf(Json const& value) {
    if (value.is_number_float()) {
        // A number goes by its value and not by its spelling in the document, so that 1.50 is no change of
        // 1.5.
        char digits[32];
        return std::wstring(digits, std::to_chars(digits, digits + sizeof digits, value.get<double>()).ptr);
    }
    return Utf8ToNative(value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump());
}

std::vector<ValueRow> ReadJson(std::string_view text, std::wstring const& name) {
    Json const document = Json::parse(text, nullptr, false);
    std::vector<ValueRow> rows;
    if (document.is_discarded()) {
        Host::Fail(name + L" is no JSON document");
    }
    if (!document.is_object() || !document.contains("values") || !document["values"].is_array()) {
        Host::Fail(name + L" has no values: {\"values\": [{\"path\": ..., \"value\": ...}]} is wanted");
    }
    for (Json const& row : document["values"]) {
        if (!row.is_object() || !row.contains("path") || !row["path"].is_string() || !row.contains("value")) {
            Host::Fail(name + L": a value is wanted as {\"path\": ..., \"value\": ...}");
        }
        Json const& value = row["value"];
        rows.push_back({TextOf(row["path"]),
                        value.is_object() ? TextOf(value.value("file", Json())) : TextOf(value), name});
    }
    return rows;
}

} // namespace

std::string CsvOf(ParameterDatabase const& database) {
    std::string text = "path,value,unit\r\n";
    ForEachValue(database, [&](std::wstring_view path, PlaceView const& place) {
        auto const* const stored = place.GetCursor().FindValue<std::wstring>(); // which may be long
        text += Field(Utf8(path)) + ',';
        text += Field(stored != nullptr ? Utf8(*stored) : Utf8(Editing::TextOf(place.GetCursor())));
        text += ',' + Field(Utf8(place.GetLayoutNode()->m_postfix)) + "\r\n";
    });
    return text;
}

std::string JsonTextOf(ParameterDatabase const& database) {
    Json values = Json::array();
    ForEachValue(database, [&](std::wstring_view path, PlaceView const& place) {
        Json row{{"path", Utf8(path)}, {"value", JsonOf(place.GetCursor())}};
        if (!place.GetLayoutNode()->m_postfix.empty()) {
            row["unit"] = Utf8(place.GetLayoutNode()->m_postfix);
        }
        values.push_back(std::move(row));
    });
    return Json{{"values", std::move(values)}}.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::vector<ValueRow> ReadValues(std::string_view text, std::wstring const& name) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") { // the mark of the encoding, which editors put in front
        text.remove_prefix(3);
    }
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    // No table begins so, as its first field is a path or the header's.
    return first != std::string::npos && text[first] == '{' ? ReadJson(text, name) : ReadCsv(text, name);
}

} // namespace Paramtool
