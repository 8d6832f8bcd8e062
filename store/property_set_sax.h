// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_persist.h>
#include <zantrel/store/indexed_properties.h>

#include <string>
#include <string_view>

/// A bag in a document: "Property" elements, each with "Name" and "Type", and "Component" elements, each with
/// "uuid".

namespace Zantrel {

class SharedNames;

/// Fills a bag from the children of one element. The bag outlives the handler, and so does `names`, which a
/// reader of many bags of one tree gives to all of them.
class PropertySetRead : public ISAXPersistHelper {
public:
    explicit PropertySetRead(PersistentProperties* target, SharedNames* names = nullptr)
        : m_target(target), m_names(names) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    bool ReadProperty(KelSAX::ISAXReader& reader);
    template <class Value, class Handler> void ReadContainer(KelSAX::ISAXReader& reader);
    bool ReadValue(KelSAX::ISAXReader& reader);
    bool ReadComponent(KelSAX::ISAXReader& reader);
    void Add(IPersistentProperty* property);

    PersistentProperties* m_target;
    SharedNames* m_names;
    // The attributes of the property being read; kept for their room.
    std::string m_type;
    std::string m_name;
};

/// Appends a bag to a sequence for each "Property" child of one element. The sequence outlives the handler.
class PropertySequenceRead : public ISAXPersistHelper {
public:
    explicit PropertySequenceRead(IndexedProperties<PersistentProperties>* target,
                                  SharedNames* names = nullptr)
        : m_target(target), m_names(names) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    IndexedProperties<PersistentProperties>* m_target;
    SharedNames* m_names;
};

/// Writes the live properties of a bag. With `leaveOutComponents`, nested sets that are named by a GUID are
/// passed over. False when a value can't be written.
bool WriteProperties(PersistentProperties const& bag, KelSAX::ISAXWriter& writer, bool leaveOutComponents);
bool WriteSequence(IndexedProperties<PersistentProperties> const& sequence, KelSAX::ISAXWriter& writer);

/// Whether a property is a nested set that is named by a GUID. A name counts as one that has the length and
/// the punctuation, with braces or without; the other characters may be anything.
bool IsComponent(std::wstring_view name, IPersistentProperty const& property);

} // namespace Zantrel
