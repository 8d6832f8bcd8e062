// SPDX-License-Identifier: Apache-2.0
#include "database/format.h"

#include "layout/value_text.h"
#include "store/record_room.h"
#include "store/reserved_names.h"

#include <zantrel/database/value_type.h>
#include <zantrel/store/indexed_properties.h>

// The bags of a group's children, with the values of those that are leaves, are built in one allocation: the
// group's block. A list item or a profile of a million is one such block.

namespace Zantrel {

namespace {

using BagProperty = PersistentProperty<PersistentProperties>;
using Items = IndexedProperties<PersistentProperties>;

bool HoldsValueOnceFormatted(LayoutNode const& node) {
    return node.m_type != eTypeLayoutNode::StandardOptions;
}

std::wstring const& DefaultText(LayoutNode const& node) {
    bool const takesFirstOption = node.m_type == eTypeLayoutNode::Options && node.m_defaultValue.empty() &&
                                  !node.m_optionValues.empty();
    return takesFirstOption ? node.m_optionValues.front() : node.m_defaultValue;
}

/// What the content by type takes of the room that its bag is built in.
std::size_t RoomForValue(LayoutNode const& node) {
    return VisitValueType(node.m_type, [&node]<class T>(TypeTag<T>) -> std::size_t {
        if constexpr (std::is_same_v<T, NoValue>) {
            return 0;
        } else {
            return HoldsValueOnceFormatted(node) ? RecordRoom::SizeOf<PersistentProperty<T>>() : 0;
        }
    });
}

std::size_t RoomFor(LayoutNode const& node) {
    bool const isContainer = node.m_isProfileList || node.m_isList;
    return RecordRoom::SizeOf<BagProperty>() + (isContainer ? 0 : RoomForValue(node));
}

/// One run of formatting.
class Formatter {
public:
    PersistentProperties& FormatNode(LayoutNode const& node, EntryTable& parent, RecordRoom& room) const;
    /// Takes from `room` for a value; a group makes a block of its own.
    void FormatContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room) const;

private:
    template <class T> decltype(auto) DefaultOf(LayoutNode const& node) const;
    void FormatChildren(LayoutNode const& group, EntryTable& table) const;
    void FormatProfileList(LayoutNode const& node, EntryTable& table) const;
    void FormatList(LayoutNode const& node, EntryTable& table) const;

    ValueReader const m_numbers;
};

template <class T> decltype(auto) Formatter::DefaultOf(LayoutNode const& node) const {
    if constexpr (std::is_same_v<T, std::wstring>) {
        return DefaultText(node);
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
        return m_numbers.ReadInteger(node.m_defaultValue);
    } else if constexpr (std::is_same_v<T, double>) {
        return m_numbers.ReadDouble(node.m_defaultValue);
    } else if constexpr (std::is_same_v<T, bool>) {
        return node.GetValue<bool>(node.m_defaultValue);
    } else {
        return T();
    }
}

void Formatter::FormatChildren(LayoutNode const& group, EntryTable& table) const {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < group.Size(); ++i) {
        bytes += RoomFor(group.At(i));
    }
    RecordRoom room = table.Reserve(group.Size(), bytes);
    for (std::size_t i = 0; i < group.Size(); ++i) {
        FormatNode(group.At(i), table, room);
    }
}

void Formatter::FormatContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room) const {
    VisitValueType(node.m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            if (node.m_type == eTypeLayoutNode::Group) {
                FormatChildren(node, bag._Entries());
            }
        } else if (HoldsValueOnceFormatted(node)) {
            if (bag.IsEmpty()) {
                bag._Entries().Emplace<PersistentProperty<T>>(EntryName::Borrow(Reserved().value), room,
                                                              DefaultOf<T>(node));
            } else {
                bag.SetValue<T>(Reserved().value, DefaultOf<T>(node));
            }
        }
    });
}

void Formatter::FormatProfileList(LayoutNode const& node, EntryTable& table) const {
    RecordRoom room = table.Reserve(1, RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    auto& profile = table.Emplace<BagProperty>(EntryName::Borrow(Reserved().defaultProfile), room);
    FormatContent(node, profile.m_value, room);
}

void Formatter::FormatList(LayoutNode const& node, EntryTable& table) const {
    RecordRoom room = table.Reserve(2, RecordRoom::SizeOf<PersistentProperty<Items>>() +
                                           RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    auto& model = table.Emplace<BagProperty>(EntryName::Borrow(Reserved().defaultProfile), room).m_value;
    FormatContent(node, model, room);
    auto& items = table.Emplace<PersistentProperty<Items>>(EntryName::Borrow(Reserved().value), room).m_value;
    while (items.GetNumProperties() < node.m_multiplicity) {
        items.AddProperty()._AssignWithinLayout(model);
    }
}

PersistentProperties& Formatter::FormatNode(LayoutNode const& node, EntryTable& parent,
                                            RecordRoom& room) const {
    auto& bag = parent.Emplace<BagProperty>(EntryName::Borrow(node.m_name), room).m_value;
    if (node.m_isProfileList) {
        FormatProfileList(node, bag._Entries());
    } else if (node.m_isList) {
        FormatList(node, bag._Entries());
    } else {
        FormatContent(node, bag, room);
    }
    return bag;
}

} // namespace

PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent) {
    RecordRoom none;
    return Formatter().FormatNode(node, parent._Entries(), none);
}

void FormatContent(LayoutNode const& node, PersistentProperties& bag) {
    RecordRoom none;
    Formatter().FormatContent(node, bag, none);
}

} // namespace Zantrel
