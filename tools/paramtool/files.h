// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "output.h"

#include <zantrel/zantrel.h>

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>

namespace Paramtool {

/// What a document is, by its root and what stands right below.
enum class FileKind { Parameters, MachineParameters, Layout, Template, Ticket };

struct FileSort {
    FileKind kind = FileKind::Parameters;
    std::wstring root; ///< local name of the root element
};

/// Takes a look at the beginning of the file. Fails when there is no root element.
FileSort SortOf(std::wstring const& path);
/// "a layout".
std::wstring WordsOf(FileKind kind);

/// Tells what a read of the file passed over. What the database had no place for because an element around it
/// was passed over goes without a line of its own. Gives how many there were.
std::size_t TellPassedOver(Output& output, std::wstring const& file, Zantrel::ReadReport const& report,
                           void (Output::*tell)(Message const&) = &Output::Tell);

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

/// A file to read; of "-" what the standard input holds, which is there once.
class InputFile {
public:
    explicit InputFile(std::wstring const& name);
    std::wstring const& Path() const { return m_path; }
    std::wstring const& Name() const { return m_name; } ///< for people
    bool IsStandard() const { return m_scratch.has_value(); }

private:
    std::wstring m_name;
    std::wstring m_path;
    std::optional<ScratchFile> m_scratch;
};

/// A file to write; "-" is the standard output, which gets all of it at Finish.
class OutputFile {
public:
    /// Fails for "-" where the standard output has something else to carry.
    OutputFile(std::wstring const& name, Output const& output);
    std::wstring const& Path() const { return m_path; }
    void Finish() const;

private:
    std::wstring m_path;
    std::optional<ScratchFile> m_scratch;
};

/// The bytes of a file. Fails when it can't be read.
std::string BytesOf(std::wstring const& path);
/// Writes bytes to where OutputFile would. Fails when that can't be done.
/// Fails where the output is one of the files that a command reads, which would be its end; an empty name is
/// none.
void RefuseToReplace(std::initializer_list<std::wstring> inputs, std::wstring const& output);

void WriteBytes(OutputFile const& file, std::string const& bytes);
/// The standard output for bytes, as they are.
void PrintBytes(std::string_view bytes);

} // namespace Paramtool
