// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "layout_source.h"

#include <zantrel/editing/lint.h>

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring layout;
    bool isStrict = false;
};

int Lint(Context& context, Options const& options) {
    Output& output = context.output;
    LayoutSource const source(options.layout);
    // What the file says and no layout takes counts as an error, too: it is lost at the next write.
    std::size_t errors = TellPassedOver(output, source.m_name, source.m_report, &Output::PrintFinding);
    std::size_t others = 0;
    for (Zantrel::Editing::LintFinding const& finding : Zantrel::Editing::Lint(*source.m_layout)) {
        output.PrintFinding({finding.severity, source.m_name, 0, 0, finding.sentence, finding.path});
        ++(finding.severity == Severity::Error ? errors : others);
    }
    return errors == 0 && (others == 0 || !options.isStrict) ? Same : Different;
}

} // namespace

Action DeclareLayoutLint(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("LAYOUT", to->layout, "a layout meta file or property template, or \"sample\"");
    line.Flag("--strict", to->isStrict, "let warnings and notes count as errors");
    return [to](Context& context) { return Lint(context, *to); };
}

} // namespace Paramtool
