// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "layout_source.h"

#include <zantrel/editing/schema.h>

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring layout, output;
};

int Schema(Context& context, Options const& options) {
    RefuseToReplace({options.layout}, options.output);
    // What a read passes over plays no part in a schema, and layout lint tells it.
    LayoutSource const source(options.layout);
    OutputFile const target(options.output, context.output);
    Zantrel::WriteReport report;
    if (!Zantrel::Editing::WriteSchema(*source.m_layout, target.Path(), &report)) {
        Host::Fail(options.output + L": " + report.Format());
    }
    target.Finish();
    context.output.m_json["output"] = Utf8(options.output);
    return Same;
}

} // namespace

Action DeclareLayoutSchema(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("LAYOUT", to->layout, "a layout meta file or property template, or \"sample\"");
    line.Need("-o,--output", to->output, "the XML schema to write", "OUT");
    return [to](Context& context) { return Schema(context, *to); };
}

} // namespace Paramtool
