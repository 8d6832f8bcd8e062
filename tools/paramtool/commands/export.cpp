// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "parameter_source.h"
#include "value_tables.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring file, format, output = L"-";
};

int Export(Context& context, Options const& options) {
    RefuseToReplace({options.file, context.layout}, options.output);
    // First, so that a target that can't be is refused before anything is read.
    OutputFile const target(options.output, context.output);
    LayoutSource const source(context.layout);
    ParameterFile const file(context.output, source, options.file);
    WriteBytes(target, options.format == L"csv" ? CsvOf(file.m_database) : JsonTextOf(file.m_database));
    context.output.m_json["output"] = Utf8(options.output);
    return Same;
}

} // namespace

Action DeclareExport(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.NeedOneOf("--to", to->format, {"csv", "json"}, "csv or json", "FORMAT");
    line.Take("--output", to->output, "write here instead of to the standard output", "OTHER");
    return [to](Context& context) { return Export(context, *to); };
}

} // namespace Paramtool
