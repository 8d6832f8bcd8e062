// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "command_line.h"
#include "layout_source.h"

#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <string>
#include <vector>

namespace Paramtool {

enum class ParameterFormat { Generic, Machine };

/// The format of a parameter file. Fails, saying what the file is, when it isn't one for this layout.
ParameterFormat FormatOf(LayoutSource const& layout, InputFile const& file);
/// What FormatOf has against the root; empty when nothing.
std::wstring StrangeRoot(LayoutSource const& layout, InputFile const& file, FileSort const& sort);

/// A parameter file of either format with the database that it was read into.
class ParameterFile {
public:
    /// Fails when the file can't be read, and tells what was passed over. The layout must outlive this.
    ParameterFile(Output& output, LayoutSource const& layout, std::wstring const& path);

    InputFile m_input;
    ParameterFormat m_format;
    Zantrel::ParameterDatabase m_database;
    std::size_t m_passedOver = 0; ///< by the read: what the database doesn't know

    /// Gives the room for values back, until they are read again as the file has them.
    void Empty() { m_database = Zantrel::ParameterDatabase(m_database.GetLayout()); }
    void ReadAgain();

    /// The place of that path. Fails when there is none, with the nearest.
    Zantrel::Editing::Place Find(std::wstring const& path);
    Zantrel::Editing::Place FindLeaf(std::wstring const& path);
    /// A profile list, or a list, as a whole.
    Zantrel::Editing::Place FindContainer(std::wstring const& path, Zantrel::PlaceKind kind);
};

/// Reads a file into a database. Fails, naming the file `name`, when that can't be done.
Zantrel::ReadReport Read(Zantrel::ParameterDatabase& database, std::wstring const& path,
                         std::wstring const& name, ParameterFormat format);

/// Writes a database, whole or not at all. Fails when that can't be done.
/// Gives what the library notes of a write that succeeded.
std::vector<std::wstring> Write(Zantrel::ParameterDatabase const& database, std::wstring const& path,
                                ParameterFormat format, bool mayWriteInPlace = false);

/// In what a database differs that is read back from what a format makes of it. Nothing is known here of what
/// a format can carry, so that a loss which nobody has thought of shows as well.
/// `readBack` is a new database on the same layout, which takes what is read; the differences point into it.
std::vector<Zantrel::Editing::Difference> LossesOf(Zantrel::ParameterDatabase const& database,
                                                   Zantrel::ParameterDatabase& readBack,
                                                   ParameterFormat format);
/// Why a format doesn't carry all of this database: the causes that are known, each a sentence.
std::vector<std::wstring> CausesOfLosses(Zantrel::ParameterDatabase const& database, ParameterFormat format);

/// Tells each as lines "- path = before" and "+ path = after".
void TellLosses(Output& output, std::vector<Zantrel::Editing::Difference> const& losses);

} // namespace Paramtool
