// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/text/string_conversion.h>

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ISAXPersist;

namespace Zantrel {
class ReadReport;
class WriteReport;
} // namespace Zantrel

/// The drivers between XML documents and handlers. Each call runs on the caller's thread from start to end;
/// calls on different handlers may run on different threads.
namespace KelAM {
namespace SaxUtilities {

/// A namespace under its prefix; the empty prefix is the default namespace.
struct Namespace {
    std::wstring m_prefix;
    std::wstring m_uri;

    Namespace() = default;
    Namespace(std::wstring const& prefix, std::wstring const& uri) : m_prefix(prefix), m_uri(uri) {}

    /// By prefix alone, in the order of std::wstring, so that a look-up without a URI finds the entry.
    bool operator<(Namespace const& other) const noexcept { return m_prefix < other.m_prefix; }
};

/// How a document is written. A value that a caller fills for one call.
/// The texts are checked when they are written: a root tag that is no XML name, "--" in a comment, or a
/// prefix that can't be declared makes the write fail. The schema is referred to only when file and
/// namespace are both given; the prefix "xsi", which that takes, is declared unless m_namespaces has it.
struct WriteOptions {
    bool m_callerOption = false;         ///< set by callers; the drivers write the same either way
    std::string m_rootTag;               ///< name of the root element, UTF-8
    std::wstring m_firstHeaderText;      ///< comment before the root; none when empty
    std::wstring m_secondHeaderText;     ///< a further comment
    std::vector<Namespace> m_namespaces; ///< declared on the root, in this order
    std::wstring m_schemaFile;           ///< path of a local schema file; empty when none
    std::wstring m_schemaNamespace;      ///< the URI that m_schemaFile describes; empty when none
    std::int32_t m_callerMode = 0;       ///< set by callers; the drivers write the same for every value
    std::shared_ptr<void> m_shared;      ///< kept for the caller and released with the options
};

/// The namespaces in force at some element of a document.
/// Starts with none, also without the prefix "xml". What was declared stays until it is declared anew: a
/// caller that leaves an element goes back to a copy. Belongs to one thread at a time.
class ZANTREL_EXPORT XMLNamespaceHandler {
public:
    /// Takes the namespace declarations ("xmlns", "xmlns:prefix") out of an element's attributes. A prefix
    /// that is known gets the new URI. The other attributes are passed over.
    void UpdateNamespaces(std::map<std::string, std::string> const& attributes);

    /// Splits `tag` at its first ":"; `localName` is a view into `tag`. True when `found` is null, or when
    /// the prefix (empty without a ":") is declared and its namespace was copied to `found`. Otherwise false,
    /// and `found` stays as it was.
    /// `localName` is set in each case.
    bool ResolveTag(std::string const& tag, std::string_view& localName, Namespace* found) const {
        std::size_t const colon = tag.find(':');
        bool const prefixed = colon != std::string::npos;
        localName = std::string_view(tag).substr(prefixed ? colon + 1 : 0);
        if (found == nullptr) {
            return true;
        }
        std::string_view const prefix =
            prefixed ? std::string_view(tag).substr(0, colon) : std::string_view();
        auto const entry =
            m_namespaces.find(Namespace(StringConversion::Utf8ToNative(prefix), std::wstring()));
        if (entry == m_namespaces.end()) {
            return false;
        }
        *found = *entry;
        return true;
    }

private:
    std::set<Namespace> m_namespaces;
};

/// Reads the document at `path` and drives `handler`, which stays the caller's. False when the file can't be
/// opened or read, or is no well-formed XML; the handler has then got what stood before the fault, and
/// neither ResolveReferences nor InitAfterLoading. What handlers answer doesn't matter. An exception of a
/// handler reaches the caller. Handlers pushed during the read are destroyed in each case. `report`, when
/// given, receives in document order what went wrong and what was passed over; it changes nothing in what is
/// read.
///
/// Taken are documents in UTF-8, and in UTF-16 with a byte order mark, without a document type, nested to
/// 1,024 elements. Memory grows with the depth and the longest text, not with the document.
ZANTREL_EXPORT bool ReadFile(std::wstring const& path, ISAXPersist& handler,
                             Zantrel::ReadReport* report = nullptr);
/// For a path of the standard library, as Zantrel::WidePath has it.
template <class Path, Zantrel::IfPath<Path> = 0>
bool ReadFile(Path const& path, ISAXPersist& handler, Zantrel::ReadReport* report = nullptr) {
    return ReadFile(Zantrel::WidePath(path), handler, report);
}
/// The same from where `in` stands to its end. False when the stream has failed. One that breaks off by an
/// exception gets its bad bit set, which throws where the host asked the stream for that.
ZANTREL_EXPORT bool ReadStream(std::basic_istream<char>& in, ISAXPersist& handler,
                               Zantrel::ReadReport* report = nullptr);

/// Writes a document whose root's content is what `handler` writes. False when it can't be written, when the
/// handler answers false, or when it wrote what XML can't carry: the file at `path` is then as it was, or
/// absent if it was absent. The file is replaced as a whole once the document is safe on the disk; its
/// permissions stay or become narrower, and its access control list and extended attributes stay where the
/// system lets them; a link is followed, and a pipe or device is written to directly. Windows doesn't replace
/// a file that another program holds open: the write tries for half a second before it gives up. An exception
/// of the handler reaches the caller. docs/saving.md has all that a save does and promises.
/// `report`, when given, is emptied at the start; it tells the first cause of a failure, and of a success
/// what the file couldn't keep. It may give leave to write in place what can't be replaced. What the options
/// and the handler refer to must not change while the write runs.
ZANTREL_EXPORT bool WriteFile(std::wstring const& path, ISAXPersist const& handler,
                              WriteOptions const& options, Zantrel::WriteReport* report = nullptr);
/// For a path of the standard library.
template <class Path, Zantrel::IfPath<Path> = 0>
bool WriteFile(Path const& path, ISAXPersist const& handler, WriteOptions const& options,
               Zantrel::WriteReport* report = nullptr) {
    return WriteFile(Zantrel::WidePath(path), handler, options, report);
}
/// The same to a stream, which on failure may have got a part of the document. A stream that doesn't take all
/// of it gets its bad bit set, as in ReadStream.
ZANTREL_EXPORT bool WriteStream(std::basic_ostream<char>& out, ISAXPersist const& handler,
                                WriteOptions const& options, Zantrel::WriteReport* report = nullptr);

} // namespace SaxUtilities
} // namespace KelAM
