// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstdint>
#include <string>
#include <type_traits>

class MFile;
template <class Bag> class IndexedProperties;

namespace KelSAX {
class ISAXReader;
class ISAXWriter;
} // namespace KelSAX

/// \file
/// What a property's value does by its type. The library instantiates these functions for std::int32_t,
/// double, bool, std::wstring, KelAM::FileContent, PersistentProperties, KelAM::SubProperties and
/// KelAM::ExternalProperties, the first three also for IndexedProperties<PersistentProperties>. A host that
/// makes a property class of its own from PersistentProperty<T> specialises them for its `T`.

/// Whether T is a sequence of bags, which has functions of its own for the binary form.
template <class T> struct IsIndexedProperties : std::false_type {};
template <class Bag> struct IsIndexedProperties<IndexedProperties<Bag>> : std::true_type {};

/// The type name: "integer", "double", "bool", "string", "FileContent", "Properties", "SubProperties",
/// "IndexedPropertySets", "ExternalProperties".
template <class T> ZANTREL_EXPORT std::wstring GetTypeOfProperty(T const& value);

/// Writes `value` as content of the element that is open on `writer`. False when it can't be written.
/// The element's attributes must have been written before.
template <class T> ZANTREL_EXPORT bool WriteValueOfProperty(T const& value, KelSAX::ISAXWriter& writer);
template <class T>
ZANTREL_EXPORT bool WriteValueOfProperty(IndexedProperties<T> const& value, KelSAX::ISAXWriter& writer);

/// Takes `value` from the element that `reader` is handling. False, and `value` is as it was, when its text
/// doesn't parse. A file or a bag pushes a handler and takes its content as it arrives; `value` must live
/// until then.
template <class T> ZANTREL_EXPORT bool HandleValueOfProperty(T& value, KelSAX::ISAXReader& reader);
template <class T>
ZANTREL_EXPORT bool HandleValueOfProperty(IndexedProperties<T>& value, KelSAX::ISAXReader& reader);

/// The binary form. Reading throws std::runtime_error on bytes that are no such value and leaves `value` as
/// it was.
/// Writing throws std::runtime_error for bags that have no binary form (IPersistentPropertyUndo); a part may
/// have been appended then.
template <class T> ZANTREL_EXPORT void WriteValueOfProperty(T const& value, MFile& file);
template <class T> ZANTREL_EXPORT void ReadValueOfProperty(T& value, MFile& file);
