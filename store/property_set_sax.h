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
    /// Without `names` each entry gets a text of its own, the words of the library aside.
    explicit PropertySetRead(PersistentProperties* target, SharedNames* names = nullptr)
        : m_target(target), m_names(names) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    /// A "Property": a container or a plain value, by its type.
    bool ReadProperty(KelSAX::ISAXReader& reader);
    /// A bag or a sequence, whose children go to a handler of its own.
    template <class Value, class Handler> void ReadContainer(KelSAX::ISAXReader& reader);
    /// Any other type by its name. False when no class has it, or its text doesn't parse.
    bool ReadValue(KelSAX::ISAXReader& reader);
    /// A "Component": the nested set of that identifier, which more than one element may add to.
    bool ReadComponent(KelSAX::ISAXReader& reader);
    /// Owns the property, also when it throws.
    void Add(IPersistentProperty* property);

    PersistentProperties* m_target;
    SharedNames* m_names;
    // The attributes of the property being read; kept for their room.
    std::string m_type;
    std::string m_name;
};

/// Appends a bag to a sequence for each "Property" child of one element. The sequence outlives the handler.
/// Names are shared as by PropertySetRead.
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
/// A "Property" for each bag, all of them written even where one fails.
bool WriteSequence(IndexedProperties<PersistentProperties> const& sequence, KelSAX::ISAXWriter& writer);

/// Whether a property is a nested set that is named by a GUID. A name counts as one that has the length and
/// the punctuation, with braces or without; the other characters may be anything.
bool IsComponent(std::wstring_view name, IPersistentProperty const& property);

} // namespace Zantrel
