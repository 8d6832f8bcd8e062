// SPDX-License-Identifier: Apache-2.0
//
// The page from its parts: what the build has put into the program from page/, and the data.

#include "page.h"

#include "page_files.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace Paramtool {

namespace {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (char const character : text) {
        // For the text of an element, the only place that the name goes to: quotes stand for themselves
        // there.
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

/// As ASCII, in which "<" can stand within strings only and isn't left there: nothing in it ends the element
/// that it stands in, nor begins a comment.
std::string TextOf(nlohmann::json const& data) {
    std::string text;
    for (char const character : data.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace)) {
        if (character == '<') {
            text += "\\u003c";
        } else {
            text += character;
        }
    }
    return text;
}

/// The parts in place of their marks, each of which the page has; what a part holds isn't looked at again.
std::string Fill(std::string_view page, std::pair<std::string_view, std::string_view> const* begin,
                 std::pair<std::string_view, std::string_view> const* end) {
    std::string filled;
    while (!page.empty()) {
        std::size_t const at = page.find('@');
        filled += page.substr(0, at);
        page.remove_prefix(at == page.npos ? page.size() : at);
        auto const* part = begin;
        // A mark ends with a "@" of its own, so that none of them is the beginning of another one.
        while (part != end && page.substr(0, part->first.size()) != part->first) {
            ++part;
        }
        if (part != end) {
            filled += part->second;
            page.remove_prefix(part->first.size());
        } else if (!page.empty()) {
            filled += '@';
            page.remove_prefix(1);
        }
    }
    return filled;
}

} // namespace

std::string PageOf(nlohmann::json const& data) {
    std::string const title = Escaped(data.at("layout").at("name").get<std::string>());
    std::string const text = TextOf(data);
    std::pair<std::string_view, std::string_view> const parts[] = {
        {"@TITLE@", title},
        {"@STYLE@", PageFiles::Style},
        {"@SCRIPT@", PageFiles::Script},
        {"@STYLE_HASH@", PageFiles::StyleHash},
        {"@SCRIPT_HASH@", PageFiles::ScriptHash},
        {"@DATA@", text},
    };
    return Fill(PageFiles::Html, std::begin(parts), std::end(parts));
}

} // namespace Paramtool
