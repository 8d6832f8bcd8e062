// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "database/layout_shapes.h"
#include "parameter_files/node_value_sax.h"

#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/prepared_tag.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

namespace Zantrel {

/// What a file has for the children in the bags of one shape, in the layout's order.
struct PlainRow {
    struct Child {
        KelSAX::PreparedTag tag;
        PlainElement write = nullptr;    ///< null: no value to be written from the block
        NodeShape const* body = nullptr; ///< that a group's bag has; null: no group to be written from there
        PlainRow* row = nullptr;         ///< of that, once somebody asked for it
        std::uint32_t place = 0;         ///< of its bag
    };

    struct Body {
        std::uint32_t place;
        std::size_t bytes; ///< of its block, at least
    };
    /// A group that has groups or containers in it.
    struct Outer {
        std::uint32_t place; ///< of its bag
        PlainRow const* row;
    };

    NodeShape const* shape = nullptr;
    std::vector<Child> children;
    std::vector<Body> bodies;         ///< of the bags that hold more than a value
    std::vector<std::uint32_t> texts; ///< the places of the bags that hold one
    std::vector<Outer> outers;        ///< those whose row was asked for
};

/// The rows of all shapes that one write meets, each made when it is first asked for: so what a shape says is
/// compared with the layout once, and the layout mustn't change meanwhile.
class PlainRows {
public:
    /// The format's IsPlain says whether a child may be written from the block, and its MakeTag gives the
    /// tag of one. Of a shape whose node is known to be there.
    template <class Format> PlainRow& Of(NodeShape const& shape, Format& format) {
        auto const [row, isNew] = m_rows.try_emplace(&shape);
        if (isNew) {
            Fill(row->second, shape, format);
        }
        return row->second;
    }

private:
    /// Whether a walk on the layout as it is now would give this child as a group or a leaf, with the bag
    /// that the shape has for it.
    static bool IsAsFormatted(NodeShape::Child const& own, LayoutNode const& node, LayoutNode const& parent) {
        return own.IsFoundAs(node) && own.type == node.m_type && node.Parent() == &parent && !node.m_isList &&
               !node.m_isProfileList && (own.body != nullptr) == (node.Size() != 0);
    }

    template <class Format> static void Fill(PlainRow& row, NodeShape const& shape, Format& format) {
        row.shape = &shape;
        std::size_t const known = shape.Children().size();
        for (NodeShape::Child const& own : shape.Children()) {
            std::uint32_t const place = shape.At(own.slot).place;
            if (own.body != nullptr || own.isList || own.isProfileList) {
                row.bodies.push_back({place, own.body != nullptr ? own.body->Bytes() : 1});
            } else if (std::holds_alternative<std::wstring>(shape.At(own.slot).model)) {
                row.texts.push_back(place);
            }
        }
        row.children.reserve(shape.Node().Size());
        for (LayoutNode const* const node : shape.Node().m_children) {
            std::size_t const position = row.children.size();
            if (position < known && IsAsFormatted(shape.Children()[position], *node, shape.Node()) &&
                format.IsPlain(*node)) {
                NodeShape::Child const& own = shape.Children()[position];
                row.children.push_back({format.MakeTag(*node),
                                        own.body == nullptr ? PlainElementOf(own.type) : nullptr, own.body,
                                        nullptr, shape.At(own.slot).place});
            } else {
                row.children.push_back({KelSAX::PreparedTag(std::string_view())});
            }
        }
    }

    std::unordered_map<NodeShape const*, PlainRow> m_rows;
};

} // namespace Zantrel
