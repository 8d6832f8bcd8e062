// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "difference_lines.h"
#include "parameter_source.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring first, second;
};

int Diff(Context& context, Options const& options) {
    if (options.first == L"-" && options.second == L"-") {
        Host::Fail(L"The standard input is there once");
    }
    Output& output = context.output;
    LayoutSource const source(context.layout);
    ParameterFile const first(output, source, options.first), second(output, source, options.second);
    auto const differences = Zantrel::Editing::Differences(first.m_database, second.m_database);
    Json json = Json::array();
    for (Zantrel::Editing::Difference const& difference : differences) {
        for (DifferenceLine const& line : LinesOf(difference)) {
            output.Print(line.text, line.isAdded ? Style::Green : Style::Red);
        }
        json.push_back(JsonOf(difference));
    }
    output.m_json["differences"] = std::move(json);
    return differences.empty() ? Same : Different;
}

} // namespace

Action DeclareDiff(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("A", to->first, "a parameter file");
    line.Need("B", to->second, "another, in either format");
    return [to](Context& context) { return Diff(context, *to); };
}

} // namespace Paramtool
