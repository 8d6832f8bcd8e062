// SPDX-License-Identifier: Apache-2.0
#include "page.h"

#include "commands.h"
#include "common/host.h"
#include "parameter_source.h"

#include <memory>
#include <optional>

namespace Paramtool {

namespace {

struct Options {
    std::wstring layout, output, values, language;
};

/// Where the file stands is nobody's business who is shown the page.
std::wstring NameWithoutFolder(InputFile const& file) {
    return Host::Wide(Host::PathOf(Utf8(file.Name())).filename());
}

void RequireLanguage(nlohmann::json const& languages, std::wstring const& language) {
    std::string known;
    for (auto const& one : languages) {
        if (one == Utf8(language)) {
            return;
        }
        known += (known.empty() ? "" : ", ") + one.get<std::string>();
    }
    Host::Fail(L"The layout's dictionary has no language \"" + language + L"\"" +
               (known.empty() ? L"" : L", but " + StringConversion::Utf8ToNative(known)));
}

int LayoutPage(Context& context, Options const& options) {
    Output& output = context.output;
    RefuseToReplace({options.layout, options.values}, options.output);
    LayoutSource const source(options.layout);
    TellPassedOver(output, source.m_name, source.m_report);
    std::optional<ParameterFile> values;
    if (!options.values.empty()) {
        values.emplace(output, source, options.values);
    }
    PageSource const page{*source.m_layout, values ? &values->m_database : nullptr,
                          values ? NameWithoutFolder(values->m_input) : L"", options.language};
    nlohmann::json const data = PageData(page);
    if (!options.language.empty()) {
        RequireLanguage(data["languages"], options.language);
    }
    WriteBytes(OutputFile(options.output, output), PageOf(data));
    output.m_json["output"] = Utf8(options.output);
    return Same;
}

} // namespace

Action DeclareLayoutPage(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("LAYOUT", to->layout, "a layout meta file or property template, or \"sample\"");
    line.Need("-o,--output", to->output, "the page to write", "OUT");
    line.Take("--values", to->values, "show the values of this parameter file", "FILE");
    line.Take("--language", to->language, "the language of the layout's dictionary to begin with", "L");
    return [to](Context& context) { return LayoutPage(context, *to); };
}

} // namespace Paramtool
