// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "parameter_source.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring file, path, output;
};

int Extract(Context& context, Options const& options) {
    RefuseToReplace({options.file, context.layout}, options.output);
    LayoutSource const source(context.layout);
    ParameterFile file(context.output, source, options.file);
    Zantrel::Editing::Place const place = file.FindLeaf(options.path);
    auto const* const content = place.GetCursor().FindValue<KelAM::FileContent>();
    if (content == nullptr) {
        Host::Fail(options.path + L" holds no attachment; paramtool query prints its value");
    }
    // Never under the name that the file says: that could lead anywhere.
    OutputFile const target(options.output, context.output);
    WriteBytes(target,
               std::string(reinterpret_cast<char const*>(content->m_data.data()), content->m_data.size()));
    // Told, so that a script can decide for itself what it makes of the name.
    context.output.m_json["name"] = Utf8(content->m_name);
    context.output.m_json["output"] = Utf8(options.output);
    context.output.m_json["bytes"] = content->m_data.size();
    return Same;
}

} // namespace

Action DeclareExtract(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    to->output = L"-";
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.Need("PATH", to->path, "the parameter that has the attachment");
    line.Take("OUT", to->output, "the file to write; the standard output unless given");
    return [to](Context& context) { return Extract(context, *to); };
}

} // namespace Paramtool
