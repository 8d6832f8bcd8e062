// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/platform/indexed_properties.h>
#include <zantrel/platform/sax_persist.h>

/// A bag in a document: "Property" elements, each with "Name" and "Type", and "Component" elements, each with
/// "uuid".

namespace Zantrel {

/// Fills a bag from the children of one element. The bag outlives the handler.
class PropertySetRead : public ISAXPersistHelper {
public:
    explicit PropertySetRead(PersistentProperties* target) : m_target(target) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    bool ReadProperty(KelSAX::ISAXReader& reader);
    bool ReadComponent(KelSAX::ISAXReader& reader);

    PersistentProperties* m_target;
};

/// Appends a bag to a sequence for each "Property" child of one element. The sequence outlives the handler.
class PropertySequenceRead : public ISAXPersistHelper {
public:
    explicit PropertySequenceRead(IndexedProperties<PersistentProperties>* target) : m_target(target) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    IndexedProperties<PersistentProperties>* m_target;
};

/// Writes the live properties of a bag. With `leaveOutComponents`, nested sets that are named by a GUID are
/// passed over. False when a value can't be written.
bool WriteProperties(PersistentProperties const& bag, KelSAX::ISAXWriter& writer, bool leaveOutComponents);
bool WriteSequence(IndexedProperties<PersistentProperties> const& sequence, KelSAX::ISAXWriter& writer);

/// Whether a name has the length and the punctuation of a GUID, with braces or without; the other characters
/// may be anything.
bool HasGuidShape(std::wstring_view name);

} // namespace Zantrel
