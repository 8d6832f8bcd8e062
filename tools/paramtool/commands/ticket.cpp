// SPDX-License-Identifier: Apache-2.0
//
// The commands of a build ticket.
//
// To look at: EffectiveValues, which tells what counts for a part and where it comes from.

#include "commands.h"
#include "layout_source.h"
#include "tickets.h"

#include <zantrel/editing/effective_values.h>

#include <memory>

namespace Paramtool {

namespace {

using Zantrel::Editing::EffectiveValue;

struct Options {
    std::wstring file, second, part;
};

void DeclarePart(CommandLine& line, Options& to, std::string const& help) {
    line.Take("--part", to.part, help, "UUID");
}

Json JsonOf(TicketFacts::value_type const& fact) {
    return {
        {"section", Utf8(fact.first.first)}, {"path", Utf8(fact.first.second)}, {"value", Utf8(fact.second)}};
}

int Show(Context& context, Options const& options) {
    Json json = Json::array();
    std::wstring section;
    for (auto const& fact : FactsOf(ReadTicket(context.output, options.file, options.part), options.part)) {
        if (fact.first.first != section) {
            section = fact.first.first;
            context.output.Print(section, Style::Bold);
        }
        context.output.Print(L"  " + fact.first.second + L" = " + fact.second);
        json.push_back(JsonOf(fact));
    }
    context.output.m_json["properties"] = std::move(json);
    return Same;
}

/// A line for what one of the two says and the other doesn't.
class Comparison {
public:
    explicit Comparison(Output& output) : m_output(output) {}
    void Add(TicketFacts::value_type const& fact, bool isAdded) {
        m_output.Print((isAdded ? L"+ " : L"- ") + fact.first.first + L' ' + fact.first.second + L" = " +
                           fact.second,
                       isAdded ? Style::Green : Style::Red);
        Json json = JsonOf(fact);
        json["kind"] = isAdded ? "added" : "removed";
        m_json.push_back(std::move(json));
    }
    Json m_json = Json::array();

private:
    Output& m_output;
};

int Diff(Context& context, Options const& options) {
    TicketFacts const first = FactsOf(ReadTicket(context.output, options.file, options.part), options.part);
    TicketFacts const second =
        FactsOf(ReadTicket(context.output, options.second, options.part), options.part);
    Comparison comparison(context.output);
    // Both are in order, so that one pass over the two finds what is in one only.
    auto before = first.begin(), after = second.begin();
    while (before != first.end() || after != second.end()) {
        bool const isBeforeFirst =
            after == second.end() || (before != first.end() && before->first < after->first);
        bool const isAfterFirst =
            before == first.end() || (after != second.end() && after->first < before->first);
        bool const isSame = !isBeforeFirst && !isAfterFirst && before->second == after->second;
        if (!isAfterFirst) {
            if (!isSame) {
                comparison.Add(*before, false);
            }
            ++before;
        }
        if (!isBeforeFirst) {
            if (!isSame) {
                comparison.Add(*after, true);
            }
            ++after;
        }
    }
    bool const isEqual = comparison.m_json.empty();
    context.output.m_json["differences"] = std::move(comparison.m_json);
    return isEqual ? Same : Different;
}

int Effective(Context& context, Options const& options) {
    static constexpr char const* sources[] = {"layout", "ticket", "part"};
    LayoutSource const source(context.layout);
    Zantrel::BuildTicket const ticket = ReadTicket(context.output, options.file, options.part);
    Json json = Json::array();
    for (EffectiveValue const& value :
         Zantrel::Editing::EffectiveValues(ticket, options.part, *source.m_layout)) {
        char const* const from = sources[static_cast<int>(value.source)];
        context.output.Print(value.property + L" = " + value.text + L" (" +
                             StringConversion::Utf8ToNative(from) + L')');
        json.push_back({{"property", Utf8(value.property)}, {"value", Utf8(value.text)}, {"source", from}});
    }
    context.output.m_json["values"] = std::move(json);
    return Same;
}

} // namespace

Action DeclareTicketShow(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("TICKET", to->file, "a build ticket");
    DeclarePart(line, *to, "only what this part overrides");
    return [to](Context& context) { return Show(context, *to); };
}

Action DeclareTicketDiff(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("A", to->file, "a build ticket");
    line.Need("B", to->second, "another");
    DeclarePart(line, *to, "only what this part overrides");
    return [to](Context& context) { return Diff(context, *to); };
}

Action DeclareTicketEffective(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("TICKET", to->file, "a build ticket");
    DeclarePart(line, *to, "of this part; otherwise of every part that overrides nothing");
    return [to](Context& context) { return Effective(context, *to); };
}

} // namespace Paramtool
