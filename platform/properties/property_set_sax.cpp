// SPDX-License-Identifier: Apache-2.0
#include "platform/properties/property_set_sax.h"

#include "platform/properties/property_set_words.h"
#include "platform/properties/visit_property.h"

#include <zantrel/platform/property_creator.h>
#include <zantrel/platform/sax_reader.h>
#include <zantrel/platform/string_conversion.h>
#include <zantrel/platform/tag_writer.h>

#include <memory>

using namespace Zantrel;
namespace Word = Zantrel::PropertySetWord;

using Sequence = IndexedProperties<PersistentProperties>;

// Reading

bool PropertySetRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag == Word::Property) {
        return ReadProperty(reader);
    }
    if (tag == Word::Component) {
        return ReadComponent(reader);
    }
    return false;
}

namespace {

/// Adds a property of a container's class and gives the children of the element to a handler on its value.
template <class Value, class Handler>
void ReadContainer(PersistentProperties& target, std::wstring const& name, std::optional<bool> deleted,
                   KelSAX::ISAXReader& reader) {
    auto* property = new PersistentProperty<Value>();
    target.AddProperty(name, property);
    if (deleted) {
        property->SetDeleted(*deleted);
    }
    reader.PushHandler(new Handler(&property->m_value));
}

} // namespace

bool PropertySetRead::ReadProperty(KelSAX::ISAXReader& reader) {
    std::string type;
    std::wstring name;
    if (!reader.ReadAttribute(type, Word::Type) || !reader.ReadAttribute(name, Word::Name)) {
        return true; // taken and ignored; its children come to this handler
    }
    bool flag = false;
    std::optional<bool> const deleted =
        reader.ReadAttribute(flag, Word::Deleted) ? std::optional<bool>(flag) : std::nullopt;

    if (type == Word::Complex) {
        ReadContainer<PersistentProperties, PropertySetRead>(*m_target, name, deleted, reader);
        return true;
    }
    if (type == Word::Complex2) {
        ReadContainer<KelAM::SubProperties, PropertySetRead>(*m_target, name, deleted, reader);
        return true;
    }
    if (type == Word::ComplexArray) {
        ReadContainer<Sequence, PropertySequenceRead>(*m_target, name, deleted, reader);
        return true;
    }
    if (type == Word::ProfileName) {
        type = Word::String;
    }
    if (type == Word::Number) {
        type = Word::Double;
    }
    std::unique_ptr<IPersistentProperty> property(
        IPersistentPropertyCreator::__CreateProperty(StringConversion::Utf8ToNative(type)));
    if (property == nullptr) {
        return false;
    }
    if (deleted) {
        property->SetDeleted(*deleted);
    }
    IPersistentProperty* added = property.get();
    m_target->AddProperty(name, property.release());
    return added->HandleValue(reader); // it stays in the bag whatever the answer
}

bool PropertySetRead::ReadComponent(KelSAX::ISAXReader& reader) {
    std::wstring uuid;
    if (!reader.ReadAttribute(uuid, Word::Uuid)) {
        return false;
    }
    std::wstring const name = KelAM::ExternalPropertyID(uuid).FormatGuid(true, true);
    reader.PushHandler(new PropertySetRead(m_target->GetValuePointer<KelAM::SubProperties>(name, true)));
    return true;
}

bool PropertySequenceRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag != Word::Property) {
        return false;
    }
    reader.PushHandler(new PropertySetRead(&m_target->AddProperty()));
    return true;
}

// Writing

bool Zantrel::HasGuidShape(std::wstring_view name) {
    bool const braced = name.size() == 38 && name.front() == L'{' && name.back() == L'}';
    if (!braced && name.size() != 36) {
        return false;
    }
    std::wstring_view const inner = braced ? name.substr(1, 36) : name;
    return inner[8] == L'-' && inner[13] == L'-' && inner[18] == L'-' && inner[23] == L'-';
}

namespace {

/// The word of the attribute "Type": a container's own, or the type name, where a double is called a number.
std::string TypeWord(IPersistentProperty const& property) {
    if (PropertyCast<PersistentProperties>(&property) != nullptr) {
        return std::string(Word::Complex);
    }
    if (PropertyCast<KelAM::SubProperties>(&property) != nullptr) {
        return std::string(Word::Complex2);
    }
    if (PropertyCast<Sequence>(&property) != nullptr) {
        return std::string(Word::ComplexArray);
    }
    std::string type = StringConversion::NativeToUtf8(property.GetType());
    return type == Word::Double ? std::string(Word::Number) : type;
}

} // namespace

bool Zantrel::WriteProperties(PersistentProperties const& bag, KelSAX::ISAXWriter& writer,
                              bool leaveOutComponents) {
    bool written = true;
    for (auto const& [name, property] : bag) {
        bool const isComponent = leaveOutComponents && HasGuidShape(name) &&
                                 property->GetType() == GetTypeOfProperty(KelAM::SubProperties());
        if (writer.HasFailed()) {
            break;
        }
        if (property->IsDeleted() || isComponent) {
            continue;
        }
        MSAXTagWriter element(writer, Word::Property);
        writer.WriteAttribute(Word::Name, name);
        writer.WriteAttribute(Word::Type, TypeWord(*property));
        written = property->WriteValue(writer) && written;
    }
    return written;
}

bool Zantrel::WriteSequence(Sequence const& sequence, KelSAX::ISAXWriter& writer) {
    bool written = true;
    for (unsigned long long i = 0; i < sequence.GetNumProperties(); ++i) {
        MSAXTagWriter element(writer, Word::Property);
        writer.WriteAttribute(Word::Type, Word::Complex);
        written =
            WriteProperties(sequence.GetProperty(static_cast<std::int32_t>(i)), writer, false) && written;
    }
    return written;
}
