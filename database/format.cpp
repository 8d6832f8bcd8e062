// SPDX-License-Identifier: Apache-2.0
#include "database/format.h"

#include "database/default_values.h"
#include "database/find_bag.h"
#include "database/layout_shapes.h"
#include "store/bag_access.h"
#include "store/reserved_names.h"

#include <zantrel/database/value_type.h>
#include <zantrel/store/indexed_properties.h>

#include <algorithm>
#include <vector>

// The bags of a group's children, with the values of those that are leaves, are built in one allocation: the
// group's block. A list item or a profile of a million is one such block. In a database it is made by the
// shape that the layout has for the group, in one go; without one, property by property.
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
    enum class Names { OfTheLayout, OfTheBag };

    Formatter(Names names, FittingShapes& fitting)
        : m_borrows(names == Names::OfTheLayout), m_fitting(fitting), m_names(NameCopier::Borrowed::Own) {
        m_open.reserve(16); // as many as most profiles have, and seldom more
    }

    /// What formatting goes by beside the layout. Both may be null.
    struct Model {
        PersistentProperties* bag; ///< of the same tree, formatted from the same node, to share its names
        NodeShape const* shape;    ///< of what stands below the node
    };

    PersistentProperties& AddNode(LayoutNode const& node, PersistentProperties& parent, RecordRoom& room,
                                  Model model);
    /// Takes from `room` for a value; a group makes a block of its own, when Finish comes to it.
    void AddContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room, Model model);
    void Finish();

private:
    struct OpenGroup {
        LayoutNode const* node;
        PersistentProperties* bag;
        Model model;
    };

    EntryName NameOf(LayoutNode const& node, PersistentProperties const* modelOfParent) {
        return m_borrows ? EntryName::Borrow(node.m_name) : NameFrom(modelOfParent, node.m_name, m_names);
    }
    static PersistentProperties* ModelBelow(PersistentProperties* modelOfParent, LayoutNode const& node);
    static PersistentProperties* ModelBelow(Model const& model, NodeShape::Child const& child);
    void AddChildren(OpenGroup const& group);
    void AddByShape(OpenGroup const& group);
    void Fill(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room, Model model);
    void AddTemplate(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room, Model model);
    void AddProfileList(LayoutNode const& node, PersistentProperties& bag, Model model);
    void AddList(LayoutNode const& node, PersistentProperties& bag, Model model);

    bool const m_borrows;
    FittingShapes& m_fitting;
    NameCopier m_names;
    DefaultValues const m_defaults;
    std::vector<OpenGroup> m_open;
};

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
    NodeShape const* const shape = group.model.shape;
    if (shape != nullptr && group.bag->IsEmpty() && m_fitting.Has(*shape, node)) {
        AddByShape(group);
        return;
    }
    std::size_t bytes = 0;
    for (LayoutNode const* const child : node.m_children) {
        bytes += RoomFor(*child);
    }
    RecordRoom room = Reserve(*group.bag, node.Size(), bytes);
    for (LayoutNode const* const child : node.m_children) {
        AddNode(*child, *group.bag, room, {group.model.bag, nullptr});
    }
}

/// What the block doesn't hold itself is added below.
void Formatter::AddByShape(OpenGroup const& group) {
    Format(*group.bag, *group.model.shape);
    NodeShape const& shape = *group.model.shape;
    for (std::size_t const index : shape.WithContent()) {
        NodeShape::Child const& child = shape.Children()[index];
        RecordRoom none;
        Fill(*child.node, BagAt(*group.bag, child.slot).m_value, none,
             {ModelBelow(group.model, child), child.body});
    }
}

void Formatter::AddContent(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room, Model model) {
    VisitValueType(node.m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            if (HasBody(node)) {
                m_open.push_back({&node, &bag, model});
            }
        } else if (HoldsValueOnceFormatted(node)) {
            // Where something stands, a value may be among it, and is then replaced.
            if (bag.IsEmpty()) {
                Emplace<PersistentProperty<T>>(bag, EntryName::Borrow(Reserved().value), room,
                                               m_defaults.Of<T>(node));
            } else {
                bag.SetValue<T>(Reserved().value, m_defaults.Of<T>(node));
            }
        }
    });
}

/// The default profile, or the template of items. Its own model is that of the list that is the model.
void Formatter::AddTemplate(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room,
                            Model model) {
    auto& made = Emplace<BagProperty>(bag, EntryName::Borrow(Reserved().defaultProfile), room).m_value;
    AddContent(node, made, room, model);
}

void Formatter::AddProfileList(LayoutNode const& node, PersistentProperties& bag, Model model) {
    RecordRoom room = Reserve(bag, 1, RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    AddTemplate(node, bag, room, model);
}

void Formatter::AddList(LayoutNode const& node, PersistentProperties& bag, Model model) {
    RecordRoom room = Reserve(bag, 2,
                              RecordRoom::SizeOf<PersistentProperty<Items>>() +
                                  RecordRoom::SizeOf<BagProperty>() + RoomForValue(node));
    AddTemplate(node, bag, room, model);
    auto& items = Emplace<PersistentProperty<Items>>(bag, EntryName::Borrow(Reserved().value), room).m_value;
    while (items.GetNumProperties() < node.m_multiplicity) {
        RecordRoom none;
        AddContent(node, items.AddProperty(), none, model);
    }
}

/// The bag that stands for `node` below a model. Of a container it is the template, which the model's entries
/// were made from.
PersistentProperties* Formatter::ModelBelow(PersistentProperties* modelOfParent, LayoutNode const& node) {
    PersistentProperties* model = modelOfParent != nullptr ? FindBag(*modelOfParent, node.m_name) : nullptr;
    bool const isContainer = node.m_isProfileList || node.m_isList;
    return model != nullptr && isContainer ? FindBag(*model, Reserved().defaultProfile) : model;
}

/// The same by its place, where the model has the shape, too.
PersistentProperties* Formatter::ModelBelow(Model const& model, NodeShape::Child const& child) {
    bool const isByPlace = model.bag != nullptr && ShapeOf(*model.bag) == model.shape && child.isFirst &&
                           !child.isList && !child.isProfileList;
    return isByPlace ? LiveBagAt(*model.bag, child.slot) : ModelBelow(model.bag, *child.node);
}

void Formatter::Fill(LayoutNode const& node, PersistentProperties& bag, RecordRoom& room, Model model) {
    if (node.m_isProfileList) {
        AddProfileList(node, bag, model);
    } else if (node.m_isList) {
        AddList(node, bag, model);
    } else {
        AddContent(node, bag, room, model);
    }
}

PersistentProperties& Formatter::AddNode(LayoutNode const& node, PersistentProperties& parent,
                                         RecordRoom& room, Model model) {
    auto& bag = Emplace<BagProperty>(parent, NameOf(node, model.bag), room).m_value;
    Fill(node, bag, room, {ModelBelow(model.bag, node), model.shape});
    return bag;
}

PersistentProperties& FormatBelow(PersistentProperties& parent, LayoutNode const& node,
                                  NodeShape const* shape, Formatter::Names names, FittingShapes& fitting) {
    RecordRoom none;
    Formatter formatter(names, fitting);
    PersistentProperties& bag = formatter.AddNode(node, parent, none, {nullptr, shape});
    formatter.Finish();
    return bag;
}

} // namespace

PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent) {
    FittingShapes none;
    return FormatBelow(parent, node, nullptr, Formatter::Names::OfTheBag, none);
}

PersistentProperties& FormatNode(LayoutNode const& node, PersistentProperties& parent, NodeShape const* shape,
                                 FittingShapes&& fitting) {
    return FormatBelow(parent, node, shape, Formatter::Names::OfTheLayout, fitting);
}

void FormatContent(LayoutNode const& node, PersistentProperties& bag, PersistentProperties* model,
                   FittingShapes& fitting) {
    RecordRoom none;
    Formatter formatter(Formatter::Names::OfTheBag, fitting);
    formatter.AddContent(node, bag, none, {model, model != nullptr ? NodeShapeOf(*model) : nullptr});
    formatter.Finish();
}

} // namespace Zantrel
