// SPDX-License-Identifier: Apache-2.0
//
// Nothing is known here of what a format can carry: a conversion is read back, and what differs is the loss.

#include "commands.h"
#include "common/host.h"
#include "difference_lines.h"
#include "parameter_source.h"

#include <filesystem>
#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel::Editing;

struct Options {
    std::wstring input, output, format;
};

int ConvertParameters(Context& context, Options const& options, ParameterFormat format) {
    Output& output = context.output;
    LayoutSource const source(context.layout);
    ParameterFile const file(output, source, options.input);
    OutputFile const target(options.output, output);
    Write(file.m_database, target.Path(), format);
    target.Finish();
    output.m_json["output"] = Utf8(options.output);
    Zantrel::ParameterDatabase readBack(file.m_database.GetLayout());
    std::vector<Difference> const losses = LossesOf(file.m_database, readBack, format);
    if (!losses.empty()) {
        output.Remark(options.output + L" can't carry all of " + file.m_input.Name());
        for (std::wstring const& cause : CausesOfLosses(file.m_database, format)) {
            output.Tell({Severity::Note, options.output, 0, 0, cause, L""});
        }
        output.Remark(L"Read back, it differs by:");
        TellLosses(output, losses);
    }
    return file.m_passedOver == 0 && losses.empty() ? Same : Different;
}

/// Whether two layouts say the same, by all that a file can say of them.
bool SayTheSame(LayoutSource const& first, LayoutSource const& second) {
    ScratchFile const one, other;
    first.Write(one.Path(), LayoutFormat::Meta);
    second.Write(other.Path(), LayoutFormat::Meta);
    return BytesOf(one.Path()) == BytesOf(other.Path());
}

int ConvertLayout(Context& context, Options const& options, LayoutFormat format) {
    Output& output = context.output;
    LayoutSource const source(options.input);
    std::size_t const passedOver = TellPassedOver(output, source.m_name, source.m_report);
    OutputFile const target(options.output, output);
    source.Write(target.Path(), format);
    std::wstring const written =
        Host::Wide(std::filesystem::absolute(Host::PathOf(Utf8(target.Path())))); // a file, even "sample"
    LayoutSource const copy(written);
    auto const losses = SayTheSame(source, copy) ? std::vector<LayoutDifference>()
                                                 : LayoutDifferences(*source.m_layout, *copy.m_layout);
    target.Finish();
    output.m_json["output"] = Utf8(options.output);
    if (!losses.empty()) {
        output.Remark(options.output + L" can't carry all of " + source.m_name +
                      L". Read back, it differs by:");
    }
    for (LayoutDifference const& loss : losses) {
        output.TellLoss(LineOf(loss).text, JsonOf(loss));
    }
    return passedOver == 0 && losses.empty() ? Same : Different;
}

int Convert(Context& context, Options const& options) {
    RefuseToReplace({options.input, context.layout}, options.output);
    std::wstring const& to = options.format;
    return to == L"meta"       ? ConvertLayout(context, options, LayoutFormat::Meta)
           : to == L"template" ? ConvertLayout(context, options, LayoutFormat::Template)
           : to == L"machine"  ? ConvertParameters(context, options, ParameterFormat::Machine)
                               : ConvertParameters(context, options, ParameterFormat::Generic);
}

} // namespace

Action DeclareConvert(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("INPUT", to->input, "a parameter file, or a layout for the formats of layouts");
    line.Need("OUTPUT", to->output, "the file to write");
    line.NeedOneOf("--to", to->format, {"generic", "machine", "meta", "template"},
                   "generic or machine for parameters, meta or template for layouts", "FORMAT");
    return [to](Context& context) { return Convert(context, *to); };
}

} // namespace Paramtool
