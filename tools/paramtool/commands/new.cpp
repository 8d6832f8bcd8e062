// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "parameter_source.h"

#include <filesystem>
#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring file;
    bool isForced = false;
};

int New(Context& context, Options const& options) {
    LayoutSource const source(context.layout);
    if (!options.isForced && std::filesystem::exists(Host::PathOf(Utf8(options.file)))) {
        Host::Fail(options.file + L" is there already; --force writes over it");
    }
    // In the generic format, as the other one carries no flags.
    OutputFile const target(options.file, context.output);
    Write(Zantrel::ParameterDatabase(source.m_layout.get()), target.Path(), ParameterFormat::Generic);
    target.Finish();
    context.output.m_json["output"] = Utf8(options.file);
    return Same;
}

} // namespace

Action DeclareNew(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "the file to write");
    line.Flag("--force", to->isForced, "write over a file that is there");
    return [to](Context& context) { return New(context, *to); };
}

} // namespace Paramtool
