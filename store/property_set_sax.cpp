// SPDX-License-Identifier: Apache-2.0
#include "store/property_set_sax.h"

#include "sax/report_texts.h"
#include "sax/value_leaf.h"
#include "store/bag_inside.h"
#include "store/create_property.h"
#include "store/property_set_words.h"
#include "store/shared_names.h"
#include "text/guid.h"

#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/tag_writer.h>
#include <zantrel/text/string_conversion.h>

#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::PropertySetWord;

using Sequence = IndexedProperties<PersistentProperties>;

// Reading. An element that can't be made a property is passed over, but its children aren't: they come to the
// same handler, as the drivers have it, and land in the bag around it.

namespace {

void ReadDeleted(IPersistentProperty& property, KelSAX::ISAXReader& reader) {
    bool isDeleted = false;
    if (reader.ReadAttribute(isDeleted, Word::Deleted)) {
        property.SetDeleted(isDeleted);
    }
}

} // namespace

bool PropertySetRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag == Word::Property) {
        return ReadProperty(reader);
    }
    if (tag == Word::Component) {
        return ReadComponent(reader);
    }
    return false;
}

bool PropertySetRead::ReadProperty(KelSAX::ISAXReader& reader) {
    auto const type = reader.FindAttribute(Word::Type);
    auto const name = reader.FindAttribute(Word::Name);
    if (!type || !name) {
        reader.NoteDropped(L"A property without a type or without a name was passed over.");
        reader.KnowAttributes({Word::Deleted});
        return true; // its children come to this handler
    }
    m_name = *name;
    if (*type == Word::Complex) {
        ReadContainer<PersistentProperties, PropertySetRead>(reader);
    } else if (*type == Word::Complex2) {
        ReadContainer<KelAM::SubProperties, PropertySetRead>(reader);
    } else if (*type == Word::ComplexArray) {
        ReadContainer<Sequence, PropertySequenceRead>(reader);
    } else {
        return ReadValue(*type, reader);
    }
    return true;
}

/// Adds a property of a container's class and gives the children of the element to a handler on its value.
template <class Value, class Handler> void PropertySetRead::ReadContainer(KelSAX::ISAXReader& reader) {
    PersistentProperty<Value>& property = Add<Value>();
    ReadDeleted(property, reader);
    Sax::NoteStrayText(reader);
    reader.PushHandler(new Handler(&property.m_value, m_names));
}

bool PropertySetRead::ReadValue(std::string_view type, KelSAX::ISAXReader& reader) {
    if (type == Word::ProfileName) {
        type = TypeName<std::wstring>;
    } else if (type == Word::Number) {
        type = TypeName<double>;
    }
    bool isKnown = false, isRead = false;
    VisitClassNamed(type, AllPropertyClasses(), [&]<class T>(PropertyClasses<T>) {
        PersistentProperty<T>& property = Add<T>();
        ReadDeleted(property, reader);
        isKnown = true;
        isRead = property.HandleValue(reader); // it stays in the bag whatever the answer
    });
    if (!isKnown && reader.HasReport()) {
        reader.NoteDropped(L"The type \"" + Sax::Excerpt(type) +
                           L"\" is not known here; the property was passed over.");
    }
    return isRead;
}

template <class Value> PersistentProperty<Value>& PropertySetRead::Add() {
    auto [name, before] = NextName();
    if (m_expected != nullptr) {
        m_expected->Count(RecordRoom::SizeOf<PersistentProperty<Value>>());
    }
    return BagInside::Table(*m_target).Behind(before).Emplace<PersistentProperty<Value>>(std::move(name),
                                                                                         m_room);
}

std::pair<EntryName, EntryName const*> PropertySetRead::NextName() {
    if (m_expected != nullptr) {
        return m_expected->Next(m_name, *m_names);
    }
    return {m_names != nullptr ? (*m_names)(m_name) : EntryName::Own(StringConversion::Utf8ToNative(m_name)),
            nullptr};
}

RecordRoom ExpectedProperties::Begin(PersistentProperties& bag) {
    bool const isTold = m_now.count == m_before.count && m_now.bytes == m_before.bytes;
    m_before = std::exchange(m_now, Extent());
    m_next = 0;
    return isTold && bag.IsEmpty() ? BagInside::Table(bag).Reserve(m_before.count, m_before.bytes)
                                   : RecordRoom();
}

// What was told of the places behind one that changes depends on it, and is told anew.
std::pair<EntryName, EntryName const*> ExpectedProperties::Next(std::string_view utf8, SharedNames& names) {
    if (m_next == MaxPlaces) {
        return {names(utf8), nullptr};
    }
    EntryName const* const before = m_next != 0 ? &m_places[m_next - 1].name : nullptr;
    if (m_next == m_places.size() || m_places[m_next].utf8 != utf8) {
        m_places.erase(m_places.begin() + static_cast<std::ptrdiff_t>(m_next), m_places.end());
        m_places.reserve(MaxPlaces); // so that `before` stays
        EntryName name = names(utf8);
        bool const isBehind = before != nullptr && !EntryNameLess()(name.View(), before->View());
        m_places.push_back({std::string(utf8), std::move(name), isBehind});
    }
    Place const& place = m_places[m_next++];
    return {place.name, place.isBehind ? before : nullptr};
}

/// All spellings of a component's identifier lead to one nested set, under the spelling that hosts look for.
bool PropertySetRead::ReadComponent(KelSAX::ISAXReader& reader) {
    std::wstring uuid;
    if (!reader.ReadAttribute(uuid, Word::Uuid)) {
        reader.NoteDropped(L"A component without an identifier was passed over.");
        return false;
    }
    std::wstring const name = KelAM::ExternalPropertyID(uuid).FormatGuid(true, true);
    Sax::NoteStrayText(reader);
    reader.PushHandler(
        new PropertySetRead(m_target->GetValuePointer<KelAM::SubProperties>(name, true), m_names));
    return true;
}

bool PropertySequenceRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag != Word::Property) {
        return false;
    }
    reader.KnowAttributes({Word::Type}); // which is written, but never read
    Sax::NoteStrayText(reader);
    reader.PushHandler(new PropertySetRead(&m_target->AddProperty(), m_names));
    return true;
}

// Writing

namespace {

/// The word of the attribute "Type": a container's own, or the type name, where a double is called a number.
template <class T>
constexpr std::string_view TypeWord = std::is_same_v<T, PersistentProperties>   ? Word::Complex
                                      : std::is_same_v<T, KelAM::SubProperties> ? Word::Complex2
                                      : std::is_same_v<T, Sequence>             ? Word::ComplexArray
                                      : std::is_same_v<T, double>               ? Word::Number
                                                                                : TypeName<T>;

bool WriteBag(PersistentProperties const& bag, KelSAX::ISAXWriter& writer) {
    return WriteProperties(bag, writer);
}
bool WriteBag(Sequence const& sequence, KelSAX::ISAXWriter& writer) {
    return WriteSequence(sequence, writer);
}

/// A container that a class of the host's own derives from is written as what it is, whatever that class
/// writes.
template <class T>
bool WriteAsContainer(IPersistentProperty const& property, KelSAX::ISAXWriter& writer, bool& written) {
    auto const* const container = PropertyCast<T>(&property);
    if (container != nullptr) {
        writer.WriteAttribute(Word::Type, TypeWord<T>);
        written = WriteBag(container->m_value, writer);
    }
    return container != nullptr;
}

/// The attribute "Type" and the value. A class of the host's own that is no container is written under its
/// own type name, and only a reader of the host's can read it back.
bool WriteTyped(IPersistentProperty const& property, KelSAX::ISAXWriter& writer) {
    bool const isKnown = VisitProperty(property, [&writer](auto const& typed) {
        writer.WriteAttribute(Word::Type, TypeWord<std::decay_t<decltype(typed.m_value)>>);
    });
    if (isKnown) {
        return property.WriteValue(writer);
    }
    bool written = true;
    if (WriteAsContainer<PersistentProperties>(property, writer, written) ||
        WriteAsContainer<KelAM::SubProperties>(property, writer, written) ||
        WriteAsContainer<Sequence>(property, writer, written)) {
        return written;
    }
    std::string const type = StringConversion::NativeToUtf8(property.GetType());
    writer.WriteAttribute(Word::Type, type == TypeName<double> ? Word::Number : std::string_view(type));
    return property.WriteValue(writer);
}

template <class T>
constexpr bool IsPlain = std::is_same_v<T, double> || std::is_same_v<T, std::wstring> ||
                         std::is_same_v<T, std::int32_t> || std::is_same_v<T, bool>;

/// Writes a plain value of the library's own with its element, in one go; false for any other property.
bool WritePlain(NamedProperty const& entry, KelSAX::ISAXWriter& writer, PropertyTags& tags) {
    bool isPlain = false;
    VisitProperty(*entry.property, [&]<class T>(PersistentProperty<T> const& typed) {
        if constexpr (IsPlain<T>) {
            PropertyTagKey const key(entry.name, TypeWord<T>);
            KelSAX::PreparedTag const& tag = tags.Of(key, [&key] {
                KelSAX::PreparedTag made(Word::Property);
                made.AddAttribute(Word::Name, key.name);
                made.AddAttribute(Word::Type, key.type);
                return made;
            });
            Sax::WriteLeaf(tag, typed.m_value, writer);
            isPlain = true;
        }
    });
    return isPlain;
}

bool WriteEntry(NamedProperty const& entry, KelSAX::ISAXWriter& writer) {
    MSAXTagWriter const element(writer, Word::Property);
    writer.WriteAttribute(Word::Name, entry.name);
    return WriteTyped(*entry.property, writer);
}

} // namespace

bool Zantrel::IsComponent(std::wstring_view name, IPersistentProperty const& property) {
    return Text::HasGuidShape(name) && property.GetType() == WideTypeName<KelAM::SubProperties>();
}

bool Zantrel::WriteStoreProperties(PersistentProperties const& store, KelSAX::ISAXWriter& writer,
                                   PropertyTags& tags) {
    bool hasComponents = false;
    for (NamedProperty const entry : store) {
        if (writer.HasFailed()) {
            break;
        }
        if (entry.property->IsDeleted() || WritePlain(entry, writer, tags)) {
            continue;
        }
        if (IsComponent(entry.name, *entry.property)) {
            hasComponents = true;
        } else {
            WriteEntry(entry, writer);
        }
    }
    return hasComponents;
}

bool Zantrel::WriteProperties(PersistentProperties const& bag, KelSAX::ISAXWriter& writer) {
    bool written = true;
    for (NamedProperty const entry : bag) {
        if (writer.HasFailed()) {
            return false;
        }
        if (!entry.property->IsDeleted()) {
            // One that can't be written doesn't keep the others from being so; the whole is no success,
            // though.
            written = WriteEntry(entry, writer) && written;
        }
    }
    return written;
}

bool Zantrel::WriteSequence(Sequence const& sequence, KelSAX::ISAXWriter& writer) {
    bool written = true;
    for (unsigned long long i = 0; i < sequence.GetNumProperties(); ++i) {
        MSAXTagWriter element(writer, Word::Property);
        writer.WriteAttribute(Word::Type, Word::Complex);
        written = WriteProperties(sequence.GetProperty(static_cast<std::int32_t>(i)), writer) && written;
    }
    return written;
}
