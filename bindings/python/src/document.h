// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "texts.h"

#include <zantrel/sax/read_limits.h>

#include <istream>
#include <optional>
#include <streambuf>
#include <string>

namespace ZantrelPython {

/// The bytes of a document, of whatever object has bytes.
struct Data {
    std::string value;
};

/// A document in a file or in memory. A read opens its file more than once, as for the root alone and then
/// for all of it; so what can be read once only, a pipe or a device, comes as bytes, with its path.
struct Document {
    std::wstring path;                ///< empty where there is none
    std::optional<std::string> bytes; ///< in place of the file's
};

/// OSError for what isn't a file and can't be read either. Of a pipe no more is read than the limit allows.
Document DocumentOf(FilePath const& path, Zantrel::ReadLimits const& limits = {});
inline Document DocumentOf(Data const& data) { return {L"", data.value}; }

/// What messages call it.
inline std::wstring NameOf(Document const& document) {
    return document.path.empty() ? L"<bytes>" : document.path;
}

/// Bytes to read where they lie, of which a string stream would take a copy for each read.
class BytesToRead : public std::streambuf {
public:
    explicit BytesToRead(std::string const& bytes) {
        char* const first = const_cast<char*>(bytes.data()); // which reading leaves alone
        setg(first, first, first + bytes.size());
    }
};

/// Calls the reader for a file or the one for a stream.
template <class OfFile, class OfStream>
bool ReadDocument(Document const& document, OfFile ofFile, OfStream ofStream) {
    if (!document.bytes) {
        return ofFile(document.path);
    }
    BytesToRead bytes(*document.bytes);
    std::istream in(&bytes);
    return ofStream(in);
}

} // namespace ZantrelPython

namespace PYBIND11_NAMESPACE {
namespace detail {

template <> struct type_caster<ZantrelPython::Data> {
    PYBIND11_TYPE_CASTER(ZantrelPython::Data, const_name("bytes | bytearray | memoryview"));

    bool load(handle source, bool) {
        if (PyUnicode_Check(source.ptr())) {
            // Its characters may be in another encoding than the one that the document declares.
            throw type_error(
                "a document is bytes, not str: a file's name goes to load(), and a text in UTF-8 is "
                "text.encode()");
        }
        if (PyObject_CheckBuffer(source.ptr()) == 0) {
            return false;
        }
        auto const copy = reinterpret_steal<object>(PyBytes_FromObject(source.ptr()));
        if (!copy) {
            throw error_already_set();
        }
        value.value.assign(PyBytes_AS_STRING(copy.ptr()),
                           static_cast<std::size_t>(PyBytes_GET_SIZE(copy.ptr())));
        return true;
    }
    static handle cast(ZantrelPython::Data const& data, return_value_policy, handle) {
        return bytes(data.value).release();
    }
};

} // namespace detail
} // namespace PYBIND11_NAMESPACE
