// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <cstdint>
#include <string>

// Ends with 0 when both libraries answer, and are those of the headers.
int main() {
    Zantrel::ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"Power", Zantrel::eTypeLayoutNode::Int, std::int32_t{200})
        ->SetRange(50, 400);
    Zantrel::ParameterDatabase database(&layout);
    auto const power = Zantrel::Editing::Place(database).Get(L"Power");
    bool const objects = Zantrel::Editing::Objections(power, L"20").size() == 1;
    return objects && Zantrel::Version() == std::string(ZANTREL_VERSION_STRING) ? 0 : 1;
}
