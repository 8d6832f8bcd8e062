// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Paramtool {

/// The local name of a document's root element, by which formats are told apart. Fails when there is none.
std::wstring RootOf(std::wstring const& path);

/// What a read of the file passed over, as lines "file:line:column: sentence (path)". What the database had
/// no place for because an element around it was passed over goes without a line of its own.
std::vector<std::wstring> LinesOf(std::wstring const& path, Zantrel::ReadReport const& report);

/// Tells of it on the standard error, if there is anything. Gives whether there is not.
bool NotePassedOver(std::vector<std::wstring> const& lines);

/// The name of a file that nobody has, in the folder for temporary files. What stands there at the end is
/// removed.
class ScratchFile {
public:
    ScratchFile();
    ScratchFile(ScratchFile const&) = delete;
    ScratchFile& operator=(ScratchFile const&) = delete;
    ~ScratchFile();
    std::wstring Path() const;

private:
    std::filesystem::path m_path;
};

} // namespace Paramtool
