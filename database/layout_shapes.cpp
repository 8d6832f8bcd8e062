// SPDX-License-Identifier: Apache-2.0
#include "database/layout_shapes.h"

#include "store/reserved_names.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <cwchar>
#include <type_traits>

namespace Zantrel {

namespace {

/// What a child's bag is made with: a leaf's value, or nothing where its content is no value.
BagShape::Model ModelOf(LayoutNode const& node, DefaultValues const& defaults) {
    bool const isContainer = node.m_isProfileList || node.m_isList;
    if (isContainer || !HoldsValueOnceFormatted(node)) {
        return {};
    }
    return VisitValueType(node.m_type, [&]<class T>(TypeTag<T>) -> BagShape::Model {
        if constexpr (std::is_same_v<T, NoValue>) {
            return {};
        } else {
            return T(defaults.Of<T>(node));
        }
    });
}

/// By the library of C, which is quicker here: all are compared, and all but always to the end.
bool IsStill(std::wstring_view before, std::wstring const& now) {
    return before.size() == now.size() && std::wmemcmp(before.data(), now.data(), now.size()) == 0;
}

bool IsAsBefore(NodeShape::Child const& child, LayoutNode const& node) {
    return child.node == &node && child.type == node.m_type && child.isList == node.m_isList &&
           child.isProfileList == node.m_isProfileList && IsStill(child.name, node.m_name) &&
           IsStill(child.defaultText, DefaultText(node)) && (child.body != nullptr) == HasBody(node);
}

} // namespace

NodeShape::NodeShape(LayoutShapes const& all, std::size_t number, LayoutNode const& node,
                     DefaultValues const& defaults)
    : m_all(all), m_number(number), m_node(node), m_changes(node.m_children.m_changes) {
    // What the children are now is kept word for word: the layout may change later, and the shape then fits
    // no more.
    std::size_t size = 0;
    for (LayoutNode const* const child : node.m_children) {
        size += child->m_name.size() + DefaultText(*child).size();
    }
    m_texts.reserve(size); // so that what has a part of it in view keeps that
    auto const keep = [this](std::wstring const& text) {
        m_texts += text;
        return std::wstring_view(m_texts).substr(m_texts.size() - text.size());
    };
    m_children.reserve(node.Size());
    for (LayoutNode const* const child : node.m_children) {
        // Of several children of one name a file means the one that a look-up finds; the others have no name
        // in it.
        bool const isFound = node.GetNode(std::wstring_view(child->m_name)) == child;
        m_children.push_back({child, 0, nullptr, child->m_type, child->m_isList, child->m_isProfileList,
                              keep(child->m_name), keep(DefaultText(*child)), false,
                              isFound ? StringConversion::NativeToUtf8(child->m_name) : std::string()});
        AddBag(child->m_name, ModelOf(*child, defaults));
        if (HasBody(*child) || child->m_isList || child->m_isProfileList) {
            m_withContent.push_back(m_children.size() - 1);
        }
    }
    if (node.m_isProfileList) {
        AddFlag(Reserved().canBeDeleted);
    }
    std::vector<std::uint32_t> const slots = Complete();
    m_childOfSlot.resize(Size());
    for (std::size_t index = 0; index < m_children.size(); ++index) {
        m_children[index].slot = slots[index];
        m_childOfSlot[slots[index]] = index;
        m_children[index].isFirst = Find(m_children[index].name) == slots[index];
        if (!m_children[index].isFirst) {
            m_children[index].utf8Name.clear();
        }
    }
}

bool NodeShape::Fits(LayoutNode const& node) const {
    return &node == &m_node && node.m_children.m_changes == m_changes && node.Size() == m_children.size() &&
           std::equal(m_children.begin(), m_children.end(), node.m_children.begin(),
                      [](Child const& child, LayoutNode const* now) { return IsAsBefore(child, *now); });
}

// Level by level with the list itself as the queue, as a layout may be deeper than the stack.
LayoutShapes::LayoutShapes(LayoutNode const* top) : m_top(top) {
    DefaultValues const defaults;
    if (top != nullptr && HasBody(*top)) {
        m_shapes.push_back(std::make_unique<NodeShape>(*this, 0, *top, defaults));
    }
    for (std::size_t index = 0; index < m_shapes.size(); ++index) {
        for (NodeShape::Child& child : m_shapes[index]->m_children) {
            if (HasBody(*child.node)) {
                m_shapes.push_back(
                    std::make_unique<NodeShape>(*this, m_shapes.size(), *child.node, defaults));
                child.body = m_shapes.back().get();
            }
        }
    }
}

/// From the top down: a node that is looked at is known to stand in the layout, since the one above fits.
bool LayoutShapes::Fit(LayoutNode const* top) const {
    bool const hasBody = top != nullptr && HasBody(*top);
    return top == m_top && hasBody != m_shapes.empty() && m_locale == std::locale() &&
           std::all_of(m_shapes.begin(), m_shapes.end(),
                       [](auto const& shape) { return shape->Fits(shape->Node()); });
}

// Two threads that meet here make two sets alike, of which the layout keeps the later one.
std::shared_ptr<LayoutShapes const> LayoutShapes::Of(ParameterLayout const& layout) {
    LayoutNode const* const top = layout.m_profileEditor.GetNode();
    std::shared_ptr<LayoutShapes const> shapes = layout.m_shapes.Get();
    if (shapes == nullptr || !shapes->Fit(top)) {
        shapes.reset(new LayoutShapes(top));
        layout.m_shapes.Set(shapes);
    }
    return shapes;
}

bool FittingShapes::Has(NodeShape const& shape, LayoutNode const& node) {
    // A file comes back to the same few nodes, item by item: those that fitted last needn't be compared
    // again.
    NodeShape const*& known = m_known[shape.Number() % m_known.size()];
    if (&shape.All() == m_whole || &shape == known) {
        return &shape.Node() == &node;
    }
    bool const fits = shape.All().Locale() == m_locale && shape.Fits(node);
    known = fits ? &shape : known;
    return fits;
}

} // namespace Zantrel
