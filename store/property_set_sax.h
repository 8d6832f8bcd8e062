// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sax/prepared_tags.h"
#include "store/entry_table.h"
#include "store/shared_names.h"

#include <zantrel/sax/sax_persist.h>
#include <zantrel/store/indexed_properties.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A bag in a document: "Property" elements, each with "Name" and "Type", and "Component" elements, each with
/// "uuid".

namespace Zantrel {

/// What the bags of one kind have held so far, as those of a ticket's instances, which mostly have the same
/// properties in the same order: a property that stands where it stood in the bag before finds its name and
/// its place at once. When two bags took the same room, the next gets as much in one allocation; at worst
/// every third bag then has room that it doesn't use.
class ExpectedProperties {
public:
    /// For a bag that is read from here on. No room where none can be told, or where something stands in the
    /// bag. Throws std::bad_alloc.
    RecordRoom Begin(PersistentProperties& bag);
    /// Comes to the next property of that bag and gives its name, with that of the one before where it isn't
    /// greater, else null. Good until the next call.
    std::pair<EntryName, EntryName const*> Next(std::string_view utf8, SharedNames& names);
    /// That property was added, of so many bytes.
    void Count(std::size_t bytes) noexcept {
        ++m_now.count;
        m_now.bytes += bytes;
    }

private:
    /// Larger bags aren't blocks, which is what all this is for.
    static constexpr std::size_t MaxPlaces = EntryTable::BlockLimit;

    struct Place {
        std::string utf8;
        EntryName name;
        bool isBehind; ///< its name isn't less than that of the place before
    };
    struct Extent {
        std::size_t count = 0;
        std::size_t bytes = 0;
    };
    Extent m_now;    ///< of the bag begun last
    Extent m_before; ///< of the one before that
    std::vector<Place> m_places;
    std::size_t m_next = 0;
};

/// Fills a bag from the children of one element. The bag outlives the handler, and so does `names`, which a
/// reader of many bags of one tree gives to all of them.
class PropertySetRead : public ISAXPersistHelper {
public:
    /// Without `names` each entry gets a text of its own, the words of the library aside.
    explicit PropertySetRead(PersistentProperties* target, SharedNames* names = nullptr)
        : m_target(target), m_names(names) {}
    /// For one of several bags with the same properties. `expected` is borrowed while elements are handled.
    PropertySetRead(PersistentProperties* target, SharedNames* names, ExpectedProperties& expected)
        : m_target(target), m_names(names), m_expected(&expected), m_room(expected.Begin(*target)) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    /// A "Property": a container or a plain value, by its type.
    bool ReadProperty(KelSAX::ISAXReader& reader);
    /// A bag or a sequence, whose children go to a handler of its own.
    template <class Value, class Handler> void ReadContainer(KelSAX::ISAXReader& reader);
    /// Any other type by its name. False when no class has it, or its text doesn't parse.
    bool ReadValue(std::string_view type, KelSAX::ISAXReader& reader);
    /// A "Component": the nested set of that identifier, which more than one element may add to.
    bool ReadComponent(KelSAX::ISAXReader& reader);
    /// Adds a property without a value, under the name that was read.
    template <class Value> PersistentProperty<Value>& Add();
    std::pair<EntryName, EntryName const*> NextName();

    PersistentProperties* m_target;
    SharedNames* m_names;
    ExpectedProperties* m_expected = nullptr;
    RecordRoom m_room;
    std::string_view m_name; ///< of the property being read
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

/// What the tag of a property is made from: its name, and the word of its type.
template <class Text> struct PropertyTagKey {
    Text name{};
    std::string_view type{};

    PropertyTagKey() = default;
    PropertyTagKey(Text const& itsName, std::string_view itsType) : name(itsName), type(itsType) {}
    template <class Other>
    explicit PropertyTagKey(PropertyTagKey<Other> const& other) : name(other.name), type(other.type) {}
};

struct PropertyTagHash {
    using is_transparent = void;
    template <class Text> std::size_t operator()(PropertyTagKey<Text> const& key) const noexcept {
        return std::hash<std::wstring_view>()(key.name) + key.type.size();
    }
};

struct PropertyTagEqual {
    using is_transparent = void;
    template <class Left, class Right>
    bool operator()(PropertyTagKey<Left> const& left, PropertyTagKey<Right> const& right) const noexcept {
        return std::wstring_view(left.name) == std::wstring_view(right.name) && left.type == right.type;
    }
};

/// The tags of properties, for all bags of a document.
class PropertyTags
    : public Sax::PreparedTags<PropertyTagKey<std::wstring>, PropertyTagHash, PropertyTagEqual> {
public:
    PropertyTags() : PreparedTags(4096) {} // a host may give each property a name of its own
};

/// Writes the live properties of a store, with tags that all stores of a document share, and says whether
/// there are components, which it passes over.
bool WriteStoreProperties(PersistentProperties const& store, KelSAX::ISAXWriter& writer, PropertyTags& tags);
/// Writes the live properties of a bag. False when a value can't be written.
bool WriteProperties(PersistentProperties const& bag, KelSAX::ISAXWriter& writer);
/// A "Property" for each bag, all of them written even where one fails.
bool WriteSequence(IndexedProperties<PersistentProperties> const& sequence, KelSAX::ISAXWriter& writer);

/// Whether a property is a nested set that is named by a GUID. A name counts as one that has the length and
/// the punctuation, with braces or without; the other characters may be anything.
bool IsComponent(std::wstring_view name, IPersistentProperty const& property);

} // namespace Zantrel
