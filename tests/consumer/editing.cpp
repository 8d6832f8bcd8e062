// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>

#include <cstdint>
#include <iostream>

int main() {
    Zantrel::ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"Power", Zantrel::eTypeLayoutNode::Int, std::int32_t{200})
        ->SetRange(50, 400);
    Zantrel::ParameterDatabase database(&layout);
    auto const power = Zantrel::Editing::Place(database).Get(L"Power");
    for (auto const& finding : Zantrel::Editing::Objections(power, L"20")) {
        std::wcout << finding.sentence << L"\n";
    }
}
