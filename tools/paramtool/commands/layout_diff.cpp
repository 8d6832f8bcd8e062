// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "difference_lines.h"
#include "layout_source.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring first, second;
};

int Diff(Context& context, Options const& options) {
    LayoutSource const first(options.first), second(options.second);
    auto const differences = Zantrel::Editing::LayoutDifferences(*first.m_layout, *second.m_layout);
    Json json = Json::array();
    for (Zantrel::Editing::LayoutDifference const& difference : differences) {
        DifferenceLine const line = LineOf(difference);
        // A node that moved and an attribute that changed have one line, with both sides in it.
        context.output.Print(line.text, line.isAdded ? Style::Green : Style::Red);
        json.push_back(JsonOf(difference));
    }
    context.output.m_json["differences"] = std::move(json);
    return differences.empty() ? Same : Different;
}

} // namespace

Action DeclareLayoutDiff(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("L1", to->first, "a layout");
    line.Need("L2", to->second, "another, in either format");
    return [to](Context& context) { return Diff(context, *to); };
}

} // namespace Paramtool
