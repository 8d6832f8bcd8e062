// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "document.h"
#include "handles.h"

#include <zantrel/sax/read_limits.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/write_report.h>

#include <memory>
#include <optional>
#include <string>

namespace ZantrelPython {

/// A list that gets the notes of a read, or None: then a warning tells of them. TypeError for what takes
/// none, so that it comes before the read.
class NotesList : public py::object {
public:
    NotesList() : py::object(py::none()) {}
    NotesList(py::object const& list);
};

/// What Python says of a read.
struct ReadOptions {
    std::wstring format; ///< "generic", "machine", or empty: what the document is
    Zantrel::ReadLimits limits;
    NotesList notes;
};

Zantrel::ReadLimits LimitsOf(py::object const& limits);

// All read and write without the interpreter's lock, and raise OSError for what can't be opened, ReadError
// and WriteError for what can't be a document.

/// Of any document, also one in which no parameters are declared.
std::shared_ptr<LayoutHandle> ReadLayout(Document const& document, ReadOptions const& options);
std::shared_ptr<LayoutHandle> LoadLayout(Document const& document, ReadOptions const& options);
/// Into a database of which nobody has nodes. On failure it holds what had arrived.
void ReadInto(DatabaseHandle& database, Document const& document, ReadOptions const& options);
std::shared_ptr<DatabaseHandle> LoadDatabase(std::shared_ptr<LayoutHandle> const& layout,
                                             Document const& document, ReadOptions const& options);

/// Gives the bytes where there is no path. `format` is "meta" or "template".
py::object SaveLayout(std::shared_ptr<LayoutHandle> const& layout, std::optional<FilePath> const& path,
                      std::wstring const& format);
py::object SaveSchema(std::shared_ptr<LayoutHandle> const& layout, std::optional<FilePath> const& path);
py::object SaveDatabase(DatabaseHandle& database, std::optional<FilePath> const& path,
                        std::wstring const& format, bool mayWriteInPlace);

/// What is wrong with a parameter document: in its structure, and what the layout has against its values.
/// Findings about values have no places where it isn't in a file.
py::list Check(std::shared_ptr<LayoutHandle> const& layout, Document const& document,
               Zantrel::ReadLimits const& limits);
/// Changes the texts of values where they stand in a file. False, and nothing happens, where the document
/// doesn't let that be done.
bool EditTexts(std::shared_ptr<LayoutHandle> const& layout, std::wstring const& path,
               std::wstring const& format, py::dict const& texts);

/// The name of the root element. Raises as a read does where there is none.
std::wstring RootOf(Document const& document);

/// Raises what a failed read calls for; otherwise hands the notes to the caller's list, or warns.
py::list TellRead(bool isRead, Document const& document, Zantrel::ReadReport const& report,
                  ReadOptions const& options);
/// Raises what a failed write calls for; otherwise warns of what the file couldn't keep.
void TellWritten(bool isWritten, std::wstring const& path, Zantrel::WriteReport const& report);

} // namespace ZantrelPython
