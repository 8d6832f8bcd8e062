// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_source.h"

#include <istream>
#include <string>
#include <vector>

namespace Paramtool {

/// One change to the values of a file: "set PATH TEXT", "profile rename LIST OLD NEW".
struct Edit {
    std::wstring where;              ///< "changes.txt:12" of one that was read, for people
    std::wstring action;             ///< "set", "profile add", "profile copy", ..., "item remove"
    std::vector<std::wstring> words; ///< what the action is done with, as many as it takes
};

/// "PATH=TEXT"; the first "=" counts that doesn't stand in a profile's name. Fails without one.
Edit ReadSetting(std::wstring const& text, std::wstring const& where);
/// A change to the entries of a list: "profile add", "item move". Fails with the wrong number of words.
Edit MakeEdit(std::wstring const& action, std::wstring const& list, std::vector<std::wstring> const& words);
/// The edits of a text in UTF-8, as `set --from` takes them: a line each, with fields that tabulators
/// separate and in which \\, \t, \n and \r are escaped; or a setting. Empty lines and those that begin with #
/// are passed over. Fails for an action that there isn't, or with the wrong number of words.
std::vector<Edit> ReadEdits(std::string const& text, std::wstring const& name);

/// Does all edits, one after another. Fails when one can't be done, or when the layout is against it and
/// `isForced` isn't true, after it has told why of each.
void Apply(std::vector<Edit> const& edits, ParameterFile& file, bool isForced, Output& output);

/// How a changed file is written.
struct SaveOptions {
    std::wstring output; ///< empty: in place
    bool isForced = false;
    bool isBackedUp = false;
    bool mayWriteInPlace = false;

    /// --output, --backup, --in-place and --force.
    void Declare(CommandLine& line);
};

/// Writes the file with the edits that were applied to it: by changing the bytes of the values alone, where
/// the file has an element for each; else anew, which fails where something would be lost that wasn't agreed
/// to, or one of the edits itself.
void Save(ParameterFile& file, std::vector<Edit> const& edits, SaveOptions const& options, Output& output);

/// Writes a database in the place of the file. Fails where values, one of the edits that led to it, or the
/// file's comments would be lost without leave.
void SaveAnew(ParameterFile const& file, Zantrel::ParameterDatabase const& database,
              std::vector<Edit> const& edits, SaveOptions const& options, Output& output);

/// Apply and Save, as a command.
int Change(Context& context, std::wstring const& file, std::vector<Edit> const& edits,
           SaveOptions const& options);

} // namespace Paramtool
