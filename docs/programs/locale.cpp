// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <iostream>
#include <locale>
#include <string>

using namespace Zantrel;

struct GermanPoints : std::numpunct<wchar_t> {
    wchar_t do_decimal_point() const override { return L','; }
    wchar_t do_thousands_sep() const override { return L'.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::locale const German(std::locale::classic(), new GermanPoints);

void Show(std::locale const& buildsUnder, double value, std::locale const& usedUnder) {
    std::locale::global(buildsUnder);
    ParameterLayout layout;
    layout.SetName(L"Printer");
    LayoutNode* power = layout.m_profileEditor->AddNode(L"Power", Double, value);
    layout.AddCategoryNodeIfNeeded();

    std::locale::global(usedUnder);
    ParameterDatabase database(&layout);
    std::locale::global(std::locale::classic());
    std::wcout << L"text " << power->m_defaultValue << L", value " << std::fixed
               << database.GetProfileEditor().Get(L"Power").GetValue<double>() << L'\n';
    for (Editing::LintFinding const& finding : Editing::Lint(layout)) {
        std::wcout << L"    " << finding.sentence << L'\n';
    }
}

int main() {
    std::wcout.precision(1);
    Show(std::locale::classic(), 200.0, German);
    Show(German, 200.5, std::locale::classic());
    Show(German, 12345, std::locale::classic());
    Show(German, 200.5, German);
    Show(std::locale::classic(), 200.5, std::locale::classic());
}
