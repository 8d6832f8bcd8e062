// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/property_values.h>

#include "sax/report_texts.h"
#include "sax/value_leaf.h"
#include "store/property_set_sax.h"
#include "store/type_names.h"

#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_writer.h>

using Sequence = IndexedProperties<PersistentProperties>;

namespace {

// One set of overloads per function; the exported templates below only pass on to them. A bag's value and a
// file's are read by handlers, which outlast the call: they fill the value while its element's children come.

bool WriteToXml(std::int32_t value, KelSAX::ISAXWriter& writer) {
    writer.WriteIntegerValue(value);
    return true;
}

bool WriteToXml(double value, KelSAX::ISAXWriter& writer) {
    writer.WriteDoubleValue(value, Zantrel::Sax::DoubleDigits, 0);
    return true;
}

bool WriteToXml(bool value, KelSAX::ISAXWriter& writer) {
    writer.WriteValue(Zantrel::Sax::BoolWord(value));
    return true;
}

bool WriteToXml(std::wstring const& value, KelSAX::ISAXWriter& writer) {
    writer.WriteValue(std::wstring_view(value));
    return true;
}

bool WriteToXml(KelAM::FileContent const& value, KelSAX::ISAXWriter& writer) {
    return KelAM::FileContentWrite(value).Write(writer);
}

bool WriteToXml(PersistentProperties const& value, KelSAX::ISAXWriter& writer) {
    return Zantrel::WriteProperties(value, writer);
}

// The handlers belong to the driver, which ends them with their element.
template <class T> bool ReadFromXml(T& value, KelSAX::ISAXReader& reader) { return reader.ReadValue(value); }

bool ReadFromXml(KelAM::FileContent& value, KelSAX::ISAXReader& reader) {
    Zantrel::Sax::NoteStrayText(reader);
    reader.PushHandler(new KelAM::FileContentRead(value));
    return true;
}

bool ReadFromXml(PersistentProperties& value, KelSAX::ISAXReader& reader) {
    Zantrel::Sax::NoteStrayText(reader);
    reader.PushHandler(new Zantrel::PropertySetRead(&value));
    return true;
}

} // namespace

template <class T> std::wstring GetTypeOfProperty(T const&) { return Zantrel::WideTypeName<T>(); }

template <class T> bool WriteValueOfProperty(T const& value, KelSAX::ISAXWriter& writer) {
    return WriteToXml(value, writer);
}

template <class T> bool WriteValueOfProperty(IndexedProperties<T> const& value, KelSAX::ISAXWriter& writer) {
    return Zantrel::WriteSequence(value, writer);
}

template <class T> bool HandleValueOfProperty(T& value, KelSAX::ISAXReader& reader) {
    if constexpr (std::is_base_of_v<PersistentProperties, T>) {
        return ReadFromXml(static_cast<PersistentProperties&>(value), reader);
    } else {
        return ReadFromXml(value, reader);
    }
}

template <class T> bool HandleValueOfProperty(IndexedProperties<T>& value, KelSAX::ISAXReader& reader) {
    Zantrel::Sax::NoteStrayText(reader);
    reader.PushHandler(new Zantrel::PropertySequenceRead(&value));
    return true;
}

template ZANTREL_EXPORT std::wstring GetTypeOfProperty(std::int32_t const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(double const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(bool const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(std::wstring const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(KelAM::FileContent const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(PersistentProperties const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(KelAM::SubProperties const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(KelAM::ExternalProperties const&);
template ZANTREL_EXPORT std::wstring GetTypeOfProperty(Sequence const&);

template ZANTREL_EXPORT bool WriteValueOfProperty(std::int32_t const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(double const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(bool const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(std::wstring const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(KelAM::FileContent const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(PersistentProperties const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(KelAM::SubProperties const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(KelAM::ExternalProperties const&, KelSAX::ISAXWriter&);
template ZANTREL_EXPORT bool WriteValueOfProperty(Sequence const&, KelSAX::ISAXWriter&);

template ZANTREL_EXPORT bool HandleValueOfProperty(std::int32_t&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(double&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(bool&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(std::wstring&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(KelAM::FileContent&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(PersistentProperties&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(KelAM::SubProperties&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(KelAM::ExternalProperties&, KelSAX::ISAXReader&);
template ZANTREL_EXPORT bool HandleValueOfProperty(Sequence&, KelSAX::ISAXReader&);
