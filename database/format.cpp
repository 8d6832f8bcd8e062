// SPDX-License-Identifier: Apache-2.0
#include "database/format.h"

#include "database/find_bag.h"
#include "layout/value_text.h"
#include "store/bag_access.h"
#include "store/reserved_names.h"

#include <zantrel/database/value_type.h>
#include <zantrel/store/indexed_properties.h>

#include <algorithm>
#include <vector>

// The bags of a group's children, with the values of those that are leaves, are built in one allocation: the
// group's block. A list item or a profile of a million is one such block.
//
// Names: what a database formats for itself borrows the names of the layout's nodes, which outlive it. Of any
// other bag nobody knows to which tree it belongs, a database's or a host's that outlives the layout. An item
// or profile therefore takes its names from the list's template or default profile, its neighbour in the
// tree, and so shares the layout's names in a database and the host's own elsewhere; what has no model owns
// them.

namespace Zantrel {

namespace {

using namespace BagAccess;
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

/// One run of formatting. What groups hold is done one group after another, with a list of those still open
/// in place of recursion, so that the depth of a layout takes no stack.
class Formatter {
public:
    explicit Formatter(Names names)
        : m_borrows(names == Names::OfTheLayout), m_names(NameCopier::Borrowed::Own) {}

    /// `model` is a bag of the same tree that was formatted from the same node, to share its names; or null.
    PersistentProperties& AddNode(LayoutNode const& node, PersistentProperties& parent, RecordRoom& room,
                                  PersistentProperties* modelOfParent);
    /// Takes from `room` for a value; a group makes a block of its own, when Finish comes to it.
    void AddContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room,
                    PersistentProperties* model);
    void Finish();

private:
    struct OpenGroup {
        LayoutNode const* node;
        PersistentProperties* bag;
        PersistentProperties* model;
    };

    template <class T> decltype(auto) DefaultOf(LayoutNode const& node) const;
    EntryName NameOf(LayoutNode const& node, PersistentProperties const* modelOfParent) {
        return m_borrows ? EntryName::Borrow(node.m_name) : NameFrom(modelOfParent, node.m_name, m_names);
    }
    void AddChildren(OpenGroup const& group);
    PersistentProperties& AddModel(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room,
                                   PersistentProperties* model);
    void AddProfileList(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model);
    void AddList(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model);

    bool const m_borrows;
    NameCopier m_names;
    ValueReader const m_numbers;
    std::vector<OpenGroup> m_open;
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

void Formatter::Finish() {
    while (!m_open.empty()) {
        OpenGroup const group = m_open.back();
        m_open.pop_back();
        auto const mark = static_cast<std::ptrdiff_t>(m_open.size());
        AddChildren(group);
        std::reverse(m_open.begin() + mark, m_open.end()); // in the layout's order, as files are read
    }
}

void Formatter::AddChildren(OpenGroup const& group) {
    LayoutNode const& node = *group.node;
    std::size_t bytes = 0;
    for (LayoutNode const* const child : node.m_children) {
        bytes += RoomFor(*child);
    }
    RecordRoom room = Reserve(*group.bag, node.Size(), bytes);
    for (LayoutNode const* const child : node.m_children) {
        AddNode(*child, *group.bag, room, group.model);
    }
}

void Formatter::AddContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room,
                           PersistentProperties* model) {
    VisitValueType(node.m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            if (node.m_type == eTypeLayoutNode::Group && node.Size() != 0) {
                m_open.push_back({&node, &bag, model});
            }
        } else if (HoldsValueOnceFormatted(node)) {
            // Where something stands, a value may be among it, and is then replaced.
            if (bag.IsEmpty()) {
                Emplace<PersistentProperty<T>>(bag, EntryName::Borrow(Reserved().value), room,
                                               DefaultOf<T>(node));
            } else {
                bag.SetValue<T>(Reserved().value, DefaultOf<T>(node));
            }
        }
    });
}

/// Adds the default profile or the template of items. Its own model is that of the list that is the model.
PersistentProperties& Formatter::AddModel(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room,
                                          PersistentProperties* model) {
    auto& made = Emplace<BagProperty>(bag, EntryName::Borrow(Reserved().defaultProfile), room).m_value;
    AddContent(node, made, room, model);
    return made;
}

void Formatter::AddProfileList(LayoutNode const& node, PersistentProperties& bag,
                               PersistentProperties* model) {
    RecordRoom room = Reserve(bag, 1, RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    AddModel(node, bag, room, model);
}

void Formatter::AddList(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model) {
    RecordRoom room = Reserve(bag, 2,
                              RecordRoom::SizeOf<PersistentProperty<Items>>() +
                                  RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    AddModel(node, bag, room, model);
    auto& items = Emplace<PersistentProperty<Items>>(bag, EntryName::Borrow(Reserved().value), room).m_value;
    while (items.GetNumProperties() < node.m_multiplicity) {
        RecordRoom none;
        AddContent(node, items.AddProperty(), none, model);
    }
}

PersistentProperties& Formatter::AddNode(LayoutNode const& node, PersistentProperties& parent,
                                         RecordRoom& room, PersistentProperties* modelOfParent) {
    PersistentProperties* model = modelOfParent != nullptr ? FindBag(*modelOfParent, node.m_name) : nullptr;
    auto& bag = Emplace<BagProperty>(parent, NameOf(node, modelOfParent), room).m_value;
    // The model of a container's entries is what the model's entries were made from.
    if (model != nullptr && (node.m_isProfileList || node.m_isList)) {
        model = FindBag(*model, Reserved().defaultProfile);
    }
    if (node.m_isProfileList) {
        AddProfileList(node, bag, model);
    } else if (node.m_isList) {
        AddList(node, bag, model);
    } else {
        AddContent(node, bag, room, model);
    }
    return bag;
}

} // namespace

PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent, Names names) {
    RecordRoom none;
    Formatter formatter(names);
    PersistentProperties& bag = formatter.AddNode(node, parent, none, nullptr);
    formatter.Finish();
    return bag;
}

void FormatContent(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model) {
    RecordRoom none;
    Formatter formatter(Names::OfTheBag);
    formatter.AddContent(node, bag, none, model);
    formatter.Finish();
}

} // namespace Zantrel
