// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/node_read.h"

#include "database/add_entry.h"
#include "database/find_bag.h"
#include "parameter_files/node_value_sax.h"
#include "sax/limit_texts.h"
#include "sax/report_texts.h"
#include "text/numbers.h"
#include "text/same_bytes.h"
#include "text/sentences.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

// The document is read beside the layout. A handler stands on one place of it and takes each of its elements
// in two steps: Recognise says what the element is there, by the grammar of the format and without touching
// the database, and HandleTag then reads it. Between the two a watch hears of it, so that no reading function
// knows whether the file is being checked.
//
// Where the place's bag has the layout's shape, and the elements come in the layout's order, the element is
// known by one comparison of its tag, and its value by its place: nothing is recognised or looked up.
// Whatever is out of the ordinary there (a flag, a deleted or replaced value, a check) takes the way above.
//
// Whatever a document holds, nothing is read outside of the place that its handler stands on, and a place
// without a bag (below a cursor on nothing) is read beside the layout like any other and only noted: so each
// thing that is lost has its own entry in the report. An element that isn't taken leaves its children to the
// same handler, one level deeper, where those that fit are taken as if they stood here.

namespace Zantrel {

namespace Word = ParameterFileWord;
using Kind = FileElement::Kind;

namespace {

/// The value of a leaf that stands in its shape's place. False where its text is no value's alone.
bool ReadPlainValue(eTypeLayoutNode type, IPersistentProperty& value, KelSAX::ISAXReader& reader) {
    return VisitValueType(type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue> || std::is_same_v<T, KelAM::FileContent>) {
            return false;
        } else {
            HandleValueOfProperty(static_cast<PersistentProperty<T>&>(value).m_value, reader);
            return true;
        }
    });
}

// A text that says no value leaves the one that stands there.
void TakeText(std::string_view text, std::int32_t& value) {
    value = Text::ParseInteger(text).value_or(value);
}
void TakeText(std::string_view text, double& value) { value = Text::ParseDouble(text).value_or(value); }
void TakeText(std::string_view text, bool& value) { value = Text::ParseBool(text).value_or(value); }
void TakeText(std::string_view text, std::wstring& value) {
    value.clear();
    Text::AppendWide(text, value);
}

void ReadFlags(std::span<FlagAttribute const> flags, ParameterNode& node, KelSAX::ISAXReader& reader) {
    if (flags.empty() || !reader.HasAttributes()) { // as nearly all elements have none
        return;
    }
    for (FlagAttribute const& flag : flags) {
        bool value = false;
        if (!reader.ReadAttribute(value, flag.word)) {
            continue;
        }
        if (CanHave(node, flag.bearers)) {
            (node.*flag.set)(value);
        } else if (reader.HasReport()) {
            reader.NoteDropped(L"The node can't have the flag " + StringConversion::Utf8ToNative(flag.word) +
                               L".");
        }
    }
}

/// Of what `node` holds as a group, an item or a profile.
NodeShape const* FittingShape(ParameterNode const& node, FittingShapes& fitting) {
    bool const isGroup = node.IsValid() && node.m_pNode != nullptr && !node.m_isContainer;
    NodeShape const* const shape = isGroup ? NodeShapeOf(*node.m_pProperties) : nullptr;
    return shape != nullptr && fitting.Has(*shape, *node.m_pNode) ? shape : nullptr;
}

} // namespace

// With a watch there is no shape: the check has to hear of each element, and is in no hurry.
NodeRead::NodeRead(ParameterNode const& node, ParameterFileGrammar const& grammar,
                   ParameterFileValidity* validity)
    : m_place{node, nullptr}, m_grammar(grammar), m_fitting(std::make_shared<FittingShapes>()),
      m_watch(validity != nullptr ? std::make_unique<ElementWatch>(*validity, node.m_pNode) : nullptr) {
    FindShape();
}

NodeRead::NodeRead(ParameterNode const& node, NodeRead const& parent, KelSAX::ISAXReader const& reader)
    : m_place{node, nullptr}, m_grammar(parent.m_grammar), m_fitting(parent.m_fitting),
      m_watch(parent.m_watch != nullptr ? parent.m_watch->Below(*node.m_pNode, reader.GetPlace()) : nullptr),
      m_leavesOutLongTexts(parent.m_leavesOutLongTexts) {
    FindShape();
}

void NodeRead::FindShape() {
    m_place.shape = m_watch == nullptr ? FittingShape(m_place.node, *m_fitting) : nullptr;
}

bool NodeRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (NodeShape::Child const* const child = NextByShape(tag, reader)) {
        ++m_place.nextChild;
        if (ReadByShape(*child, reader)) {
            KnowAttributes(Kind::Parameter, reader);
            return true;
        }
    }
    FileElement const element = Recognise(tag, reader);
    bool const isRoot = reader.GetDepth() == 0;
    KnowAttributes(element.kind, reader);
    if (m_watch != nullptr && !m_watch->Admits(element, tag, reader.GetDepth())) {
        return isRoot;
    }
    switch (element.kind) {
    case Kind::Default:
        ReadDefault(reader);
        return true;
    case Kind::Entry:
        ReadEntry(reader);
        return true;
    case Kind::Parameter:
        ReadParameter(*element.child, reader);
        return true;
    case Kind::Nameless:
        reader.NoteDropped(L"A property without a name was passed over.");
        return false;
    case Kind::Unknown:
        if (!isRoot) { // which may have any name
            NoteUnknown(reader);
        }
        return isRoot;
    case Kind::Unhandled:
        break;
    }
    return isRoot;
}

// By shape

inline NodeShape::Child const* NodeRead::NextCalled(std::string_view name) const {
    if (m_place.shape == nullptr || m_place.nextChild >= m_place.shape->Children().size()) {
        return nullptr;
    }
    NodeShape::Child const& child = m_place.shape->Children()[m_place.nextChild];
    return !name.empty() && Text::SameBytes(name, child.utf8Name) ? &child : nullptr;
}

bool NodeRead::HandleLeaf(std::string_view tag, std::string_view text) {
    bool const isNamedByTag = !m_grammar.NamesParametersByAttribute();
    NodeShape::Child const* const child = isNamedByTag ? NextCalled(tag) : nullptr;
    if (child == nullptr || child->isList || child->isProfileList) {
        return false;
    }
    return VisitValueType(child->type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue> || std::is_same_v<T, KelAM::FileContent>) {
            return false;
        } else {
            T* const value =
                BagAccess::PlainValueAt<T>(*m_place.node.m_pProperties, *m_place.shape, child->slot);
            if (value != nullptr) {
                TakeText(text, *value);
                ++m_place.nextChild;
            }
            return value != nullptr;
        }
    });
}

bool NodeRead::HandleGroup(std::string_view tag) {
    Place inner;
    bool const isTaken =
        m_watch == nullptr && !m_grammar.NamesParametersByAttribute() && FindGroup(tag, inner.node);
    if (isTaken) {
        inner.shape = FittingShape(inner.node, *m_fitting);
        // In a stack of places and not in a handler of its own, which would be an allocation for each group.
        m_around.push_back(std::move(m_place));
        m_place = std::move(inner);
    }
    return isTaken;
}

void NodeRead::HandleGroupEnd() {
    m_place = std::move(m_around.back());
    m_around.pop_back();
}

bool NodeRead::FindGroup(std::string_view tag, ParameterNode& node) {
    if (NodeShape::Child const* const child = NextCalled(tag)) {
        return FindGroupByShape(*child, node);
    }
    // What isn't known by shape is left to HandleTag, but for default profiles and items, of which files have
    // most.
    if (m_place.node.m_pNode == nullptr || !m_place.node.IsValid()) {
        return false;
    }
    if (IsOnProfileList()) {
        if (tag != Word::Default) {
            return false;
        }
        node = m_place.node.GetDefault();
        return true;
    }
    bool const isItem = IsOnList() && m_place.node.m_pNode->m_type == eTypeLayoutNode::Group &&
                        Text::EqualsUtf8(m_place.node.m_pNode->m_nodeName, tag);
    if (isItem) {
        node = AddItem(m_place.node, *m_fitting);
    }
    return isItem;
}

bool NodeRead::FindGroupByShape(NodeShape::Child const& child, ParameterNode& node) {
    bool const isContainer = child.isList || child.isProfileList;
    bool const isGroup = isContainer || child.body != nullptr;
    if (!isGroup || NodeShapeOf(*m_place.node.m_pProperties) != m_place.shape) {
        return false;
    }
    auto& bag = BagAccess::BagAt(*m_place.node.m_pProperties, child.slot);
    if (bag.m_deleted) {
        return false;
    }
    ++m_place.nextChild;
    node = CursorOn(*child.node, &bag.m_value);
    if (isContainer) {
        node.Clear();
    }
    return true;
}

NodeShape::Child const* NodeRead::NextByShape(std::string_view tag, KelSAX::ISAXReader& reader) {
    if (m_place.shape == nullptr) {
        return nullptr;
    }
    std::string_view name = tag;
    if (m_grammar.NamesParametersByAttribute()) {
        bool const isParameter = tag == m_grammar.parameterTag && reader.ReadAttribute(m_name, Word::Name);
        name = isParameter ? m_name : std::string_view();
    }
    return NextCalled(name);
}

bool NodeRead::ReadByShape(NodeShape::Child const& child, KelSAX::ISAXReader& reader) {
    bool const hasFlags = !m_grammar.parameterFlags.empty() && reader.HasAttributes();
    if (hasFlags ||
        NodeShapeOf(*m_place.node.m_pProperties) != m_place.shape) { // a host may have changed the bag
        return false;
    }
    bool const isContainer = child.isList || child.isProfileList;
    if (!isContainer && child.body == nullptr) {
        auto* const value = BagAccess::PlainValueAt(*m_place.node.m_pProperties, *m_place.shape, child.slot);
        return value != nullptr && ReadPlainValue(child.type, *value, reader);
    }
    auto& bag = BagAccess::BagAt(*m_place.node.m_pProperties, child.slot);
    if (bag.m_deleted) {
        return false;
    }
    ParameterNode node = CursorOn(*child.node, &bag.m_value);
    ReadContent(node, reader);
    return true;
}

// What an element is

FileElement NodeRead::Recognise(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (m_place.node.m_pNode == nullptr) { // a database without a layout of its own
        return {Kind::Unhandled};
    }
    if (IsOnProfileList() && tag == Word::Default) {
        return {Kind::Default};
    }
    if ((IsOnProfileList() || IsOnList()) && Text::EqualsUtf8(m_place.node.m_pNode->m_nodeName, tag)) {
        return {Kind::Entry};
    }
    return RecogniseParameter(tag, reader);
}

FileElement NodeRead::RecogniseParameter(std::string const& tag, KelSAX::ISAXReader& reader) {
    bool const isNamedByAttribute = m_grammar.NamesParametersByAttribute();
    // Of a node that is both, the elements are those of a profile list.
    bool const mayBeParameter =
        isNamedByAttribute ? tag == m_grammar.parameterTag : IsOnProfileList() || !IsOnList();
    if (!mayBeParameter) {
        return {Kind::Unhandled};
    }
    if (isNamedByAttribute && !reader.ReadAttribute(m_name, Word::Name)) {
        return {Kind::Nameless};
    }
    // Fast where documents keep the layout's order.
    LayoutNode const* const child =
        m_place.node.m_pNode->FindChildUtf8(isNamedByAttribute ? m_name : tag, m_place.childHint);
    if (NodeShape::Child const* const met =
            child != nullptr && m_place.shape != nullptr ? m_place.shape->FindChild(*child) : nullptr) {
        // After an element out of order the next one is expected behind it, so that one gap or exchange costs
        // one look-up and not all that follow.
        m_place.nextChild = static_cast<std::size_t>(met - m_place.shape->Children().data()) + 1;
    }
    return {child != nullptr ? Kind::Parameter : Kind::Unknown, child};
}

void NodeRead::NoteUnknown(KelSAX::ISAXReader& reader) const {
    // Where the tag is the name, the report hears it as that of an element that was not taken.
    if (m_grammar.NamesParametersByAttribute() && reader.HasReport()) {
        reader.NoteDropped(L"The parameter \"" + Sax::Excerpt(m_name) +
                           L"\" is not known here and was passed over.");
    }
}

void NodeRead::KnowAttributes(Kind kind, KelSAX::ISAXReader& reader) const {
    if (!reader.HasReport()) {
        return;
    }
    ParameterFileGrammar::Attributes const& attributes = m_grammar.attributes;
    if (reader.GetDepth() == 0) {
        reader.KnowAttributes(attributes.root);
    } else if (kind == Kind::Default) {
        reader.KnowAttributes(attributes.defaultProfile);
    } else if (kind == Kind::Entry) {
        reader.KnowAttributes(IsOnProfileList() ? attributes.profile : attributes.item);
    } else {
        reader.KnowAttributes(attributes.parameter);
    }
}

// Reading it

void NodeRead::ReadDefault(KelSAX::ISAXReader& reader) {
    // A cursor on nothing has no node, and what is read beside the layout needs one.
    ParameterNode profile = m_place.node.GetDefault();
    profile.m_pNode = m_place.node.m_pNode;
    ReadChildren(profile, reader);
}

void NodeRead::ReadEntry(KelSAX::ISAXReader& reader) {
    if (!m_place.node.IsValid()) {
        reader.NoteDropped(NoPlace);
    } else if (!IsEntryWithinLimit(reader)) {
        return;
    } else if (IsOnProfileList()) {
        ReadProfile(reader);
    } else {
        ParameterNode item = AddItem(m_place.node, *m_fitting);
        ReadFlags(m_grammar.itemFlags, item, reader);
        ReadValue(item, reader);
    }
}

void NodeRead::ReadProfile(KelSAX::ISAXReader& reader) {
    std::wstring name;
    reader.ReadAttribute(name, Word::Name);
    if (reader.HasReport() && !IsNameAdmitted(name, reader)) {
        return;
    }
    ParameterNode profile = AddProfile(m_place.node, name, *m_fitting);
    ReadFlags(m_grammar.profileFlags, profile, reader);
    ReadChildren(profile, reader);
}

bool NodeRead::IsEntryWithinLimit(KelSAX::ISAXReader& reader) {
    bool const isProfile = IsOnProfileList();
    std::uint64_t const most = isProfile ? reader.GetLimits().m_profiles : reader.GetLimits().m_listItems;
    bool const isWithin = ++m_entries <= most;
    if (!isWithin) {
        reader.Refuse(Sax::BeyondLimit(isProfile ? Sax::Limit::Profiles : Sax::Limit::ListItems, most));
    }
    return isWithin;
}

// Only the first of one name is found by it, by the writer too: it writes that one for each of them, with all
// the lists in it, so that n such profiles on each of k levels become n^k. In front of it may stand a flag of
// the list that has the name, for which HasProfile would say no.
bool NodeRead::IsNameAdmitted(std::wstring const& name, KelSAX::ISAXReader& reader) const {
    PersistentProperties const& list = *m_place.node.m_pProperties;
    auto at = list.Find(name);
    while (at != list.end() && (*at).name == name && !PropertyCast<PersistentProperties>((*at).property)) {
        ++at;
    }
    if (at == list.end() || (*at).name != name) {
        return true;
    }
    bool const isRefused = reader.GetLimits().m_refusesSameProfiles;
    std::wstring const sentence = Text::Fill(
        L"A profile \"{0}\" stands here already, and is the only one that is found by that name{1}.",
        {Sax::Excerpt(reader.FindAttribute(Word::Name).value_or("")),
         isRefused ? L"; this read refuses such (m_refusesSameProfiles)" : L""});
    if (isRefused) {
        reader.Refuse(sentence);
    } else {
        reader.NoteDropped(sentence);
    }
    return !isRefused;
}

void NodeRead::ReadParameter(LayoutNode const& child, KelSAX::ISAXReader& reader) {
    bool const isContainer = child.m_isList || child.m_isProfileList;
    ParameterNode node = m_place.node.Get(&child);
    if (node.m_pNode == nullptr) { // below a cursor without a bag
        node.m_pNode = &child;
        node.m_isContainer = isContainer;
    }
    ReadFlags(m_grammar.parameterFlags, node, reader);
    ReadContent(node, reader);
}

void NodeRead::ReadContent(ParameterNode& node, KelSAX::ISAXReader& reader) {
    if (!node.m_isContainer) {
        ReadValue(node, reader);
        return;
    }
    // What the file lists replaces what is there, also where it lists nothing.
    if (node.IsValid()) {
        node.Clear();
    }
    ReadChildren(node, reader);
}

void NodeRead::ReadValue(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    VisitValueType(node.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            ReadChildren(node, reader);
        } else {
            ReadLeafValue<T>(node, reader);
        }
    });
}

void NodeRead::ReadChildren(ParameterNode const& node, KelSAX::ISAXReader& reader) {
    Sax::NoteStrayText(reader);
    reader.PushHandler(new NodeRead(node, *this, reader));
}

} // namespace Zantrel
