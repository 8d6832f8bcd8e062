// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/cursors.h"
#include "common/host.h"
#include "parameter_source.h"

#include <algorithm>
#include <cwctype>
#include <iostream>
#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

struct Options {
    std::wstring file;
    std::vector<std::wstring> path; ///< none or one, which may be empty
    std::wstring contains;
    bool ignoresCase = false;
};

/// Character by character, which is what most scripts need.
std::wstring Folded(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t unit) {
        return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(unit)));
    });
    return text;
}

int List(Output& output, ParameterFile const& file, Options const& options) {
    std::wstring const wanted = options.ignoresCase ? Folded(options.contains) : options.contains;
    Json found = Json::array();
    bool isFound = false;
    for (PlaceWalk walk(file.m_database); walk.Next();) {
        PlaceView const& place = walk.GetPlace();
        std::wstring const path(walk.GetPathBelowTop());
        if (!place.IsLeaf() ||
            (options.ignoresCase ? Folded(path) : path).find(wanted) == std::wstring::npos) {
            continue;
        }
        isFound = true;
        if (output.m_isJson) {
            found.push_back({{"path", Utf8(path)}, {"value", JsonOf(place.GetCursor())}});
        } else {
            std::wstring const value = ShownValue(place.GetCursor());
            output.Print(path + (value.empty() ? L"" : L" = " + value));
        }
    }
    if (!isFound) {
        output.Remark(L"no path of " + file.m_input.Name() + L" contains \"" + options.contains + L'"' +
                      (options.ignoresCase ? L"" : L"; --ignore-case looks for it in any case"));
    }
    output.m_json["places"] = std::move(found);
    return isFound ? Same : Different;
}

int Query(Context& context, Options const& options) {
    LayoutSource const source(context.layout);
    ParameterFile file(context.output, source, options.file);
    if (options.path.empty()) {
        return List(context.output, file, options);
    }
    Place const place = file.FindLeaf(options.path.front());
    if (context.output.m_isJson) {
        context.output.m_json["path"] = Utf8(options.path.front());
        context.output.m_json["value"] = JsonOf(place.GetCursor());
    } else {
        // As it stands, for another program to take.
        std::cout << Utf8(Host::PlainText(place.GetCursor())) << '\n';
    }
    return Same;
}

} // namespace

Action DeclareQuery(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.TakeMany("PATH", to->path, "the parameter whose value is printed");
    line.Take("--contains", to->contains,
              "list the parameters with this text in their path, in this case; without either, all", "TEXT");
    line.Flag("--ignore-case", to->ignoresCase, "let capitals and small letters count as the same");
    return [to](Context& context) {
        if (to->path.size() > 1 || (!to->path.empty() && (!to->contains.empty() || to->ignoresCase))) {
            Host::Fail(L"query takes one path, or --contains");
        }
        return Query(context, *to);
    };
}

} // namespace Paramtool
