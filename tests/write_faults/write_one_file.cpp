// SPDX-License-Identifier: Apache-2.0
// Writes one parameter file, in several pieces: write_one_file <path>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/parameter_files/generic_parameter_file.h>

#include <filesystem>

int main(int, char** arguments) {
    Zantrel::ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"Text", Zantrel::String, std::wstring(600000, L'x'));
    Zantrel::ParameterDatabase const database(&layout);
    bool const isWritten = WriteFile(database, std::filesystem::path(arguments[1]).wstring(), L"");
    return isWritten ? 10 : 11; // neither of which it ends with when it doesn't come so far
}
