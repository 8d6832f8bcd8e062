// SPDX-License-Identifier: Apache-2.0
//
// The commands that look at one file.
//
// To look at: CreateContentList, the index of all leaves, and how its entries become cursors, in List;
// IsValidParameterFile, whose messages tell of elements and whose report tells of values, in Check.

#include "commands.h"
#include "common/cursors.h"
#include "common/host.h"
#include "files.h"
#include "layout_source.h"
#include "parameter_source.h"
#include "terminal.h"

#include <iostream>

namespace Paramtool {

namespace {

using namespace Zantrel;

bool IsChanged(Places const& place) {
    ParameterView const &node = place.Node(), &defaults = place.Defaults();
    return place.IsAdded() || place.Text() != Places::TextOf(defaults) ||
           (node.IsContainer() && node.GetSize() != defaults.GetSize());
}

std::wstring LineOf(Places const& place) {
    std::wstring line = std::wstring(2 * place.Depth(), L' ') + place.Title();
    ParameterView const& node = place.Node();
    if (node.IsContainer()) {
        line += L": " + std::to_wstring(node.GetSize()) + L" x " + node.GetLayoutNode()->m_nodeName;
    }
    return line + place.Text();
}

int List(ParameterFile& file, std::wstring const& text) {
    ContentList leaves;
    file.m_database.GetProfileEditor().CreateContentList(leaves);
    Status status = Different;
    for (ContentList::Node const& leaf : leaves.m_nodes) {
        if (leaf.m_path.find(text) != std::wstring::npos) {
            ParameterNode cursor;
            cursor.m_pNode = leaf.m_pLayout;
            cursor.m_pProperties = leaf.m_pProperties;
            Print(leaf.m_path + Places::TextOf(cursor));
            status = Same;
        }
    }
    return status;
}

} // namespace

int Show(Arguments const& arguments) {
    LayoutSource const source(arguments.layout);
    ParameterFile file(*source.m_layout, arguments.file);
    NotePassedOver(file.m_passedOver);
    std::vector<std::wstring> headings; // one a level, empty once printed
    for (Places place(file.m_database); place.Next();) {
        bool const isChanged = IsChanged(place);
        headings.resize(place.Depth());
        headings.push_back(LineOf(place));
        if (arguments.changed && !isChanged) {
            continue;
        }
        for (std::wstring& heading : headings) {
            if (!heading.empty()) {
                Print(heading, isChanged && &heading == &headings.back() ? Look::Bold : Look::Plain);
            }
            heading.clear();
        }
    }
    return Same;
}

int Query(Arguments const& arguments) {
    LayoutSource const source(arguments.layout);
    ParameterFile file(*source.m_layout, arguments.file);
    NotePassedOver(file.m_passedOver);
    if (arguments.path.empty()) {
        return List(file, arguments.contains);
    }
    // As it stands, for another program to take.
    std::cout << StringConversion::NativeToUtf8(Host::PlainText(file.Find(arguments.path))) << '\n';
    return Same;
}

int Check(Arguments const& arguments) {
    LayoutSource const source(arguments.layout);
    bool const isMachine = FormatOf(arguments.file) == ParameterFormat::Machine;
    if (isMachine) {
        // The check wants the file's root to be called like the layout's, and this format's root has one
        // name.
        source.m_layout->SetName(L"KlvrMachineParameters");
    }
    ParameterFileValidityResult result;
    ReadReport report;
    bool const isValid =
        isMachine
            ? KlvrProperties::IsValidParameterFile(*source.m_layout, arguments.file, {}, &result, &report)
            : IsValidParameterFile(*source.m_layout, arguments.file, {}, &result, &report);
    if (!isValid && result.m_messages.empty()) {
        Host::FailToRead(arguments.file, report);
    }
    for (std::wstring const& message : result.m_messages) {
        Print(arguments.file + L": " + message);
    }
    // Of elements the messages speak, of values that don't parse only the report.
    std::vector<std::wstring> const passedOver = LinesOf(arguments.file, report);
    for (std::wstring const& line : passedOver) {
        Print(line);
    }
    return result.m_isValid && passedOver.empty() ? Same : Different;
}

} // namespace Paramtool
