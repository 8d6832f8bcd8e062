// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_whole_read.h"

#include "layout_files/meta_file_attributes.h"
#include "layout_files/read_values.h"
#include "layout_files/resource_dictionary_read.h"
#include "text/numbers.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Zantrel {

namespace Word = LayoutWord;
using Layout = ParameterLayout;

// As in all meta files a tag is the name of a node, so that what it means depends on where it stands: below
// which node, and in what kind of element. Each element asks the one around it, which is the last of m_open;
// the walk itself only carries the place from there to what adds a node. What a file names, and what it has
// that the layout has a handle for, is looked up when all nodes are there.

namespace {

/// A node that every layout has, or may have from its making.
struct OwnNode {
    Layout::pNode Layout::*handle;
    bool isAlsoInJob; ///< its element may stand in that of a job, which doesn't hold the node
};
constexpr OwnNode OwnNodes[] = {
    {&Layout::m_profileEditor, false},   {&Layout::m_genericParameters, false},
    {&Layout::m_categories, false},      {&Layout::m_platformConfigurator, true},
    {&Layout::m_platformOptions, false}, {&Layout::m_partOptions, false},
    {&Layout::m_partConfigurator, true}, {&Layout::m_jobConfigurator, false},
};

bool IsListWord(std::string_view type) {
    return type == Word::ListContainer || type == Word::TransformListContainer;
}

constexpr double MostBags = 1e6;

/// How many bags formatting makes of a node, with or without the items that lists begin with. A list makes
/// its content once more, for the template. In a double, which only grows vague where the answer is plain.
double CountBags(LayoutNode const& node, bool withItems) {
    double content = 1;
    for (LayoutNode const* const child : node.m_children) {
        content += CountBags(*child, withItems);
    }
    bool const hasItems = withItems && node.m_isList && !node.m_isProfileList;
    return hasItems ? content * (static_cast<double>(node.m_multiplicity) + 1) : content;
}

} // namespace

MetaFileWholeRead::MetaFileWholeRead(ParameterLayout& layout, ReadReport* report)
    : LayoutRead(layout), m_report(report), m_references(report) {
    // The handle leads to the node below "Version". Only a version that this layout owns is met in a file: in
    // a copy the handle leads to the source's.
    LayoutNode* const minor = NodeOf(&Layout::m_versionNode);
    LayoutNode* const version = minor != nullptr ? minor->m_parent : nullptr;
    if (version != nullptr && version->GetOwner() == &layout) {
        m_version = version;
        m_versions.insert(version->m_children.begin(), version->m_children.end());
    }
}

void MetaFileWholeRead::ReadRoot(KelSAX::ISAXReader& reader) { ReadNode(reader, false); }

bool MetaFileWholeRead::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    Element& around = m_open.back();
    GoTo(around.place);
    if (tag == Word::ResourceDictionary && reader.GetDepth() == 1) {
        return ReadDictionary(reader);
    }
    switch (around.kind) {
    case Kind::Node:
        return ReadInNode(tag, reader);
    case Kind::Container:
        // Before the item is read, which opens an element of its own and may move this one.
        around.kind = Kind::Filled;
        return ReadItem(tag, reader);
    case Kind::Filled:
        reader.NoteDropped(L"A container holds one element; this one was passed over.");
        return Skip(reader);
    case Kind::Options:
        return ReadInOptions(tag, reader);
    case Kind::Choices:
        return ReadChoice(tag, reader);
    case Kind::Leaf:
        Open(Kind::Skipped);
        return false;
    case Kind::Skipped:
        break;
    }
    return Skip(reader);
}

void MetaFileWholeRead::HandleEndTag(std::string_view) {
    Element const ended = m_open.back();
    m_open.pop_back();
    if (ended.kind == Kind::Options) {
        ended.place.node->m_type = Options; // among none
    } else if (ended.kind == Kind::Container && m_report != nullptr) {
        m_containerPlace.sentence =
            L"The container holds no element that would say what it is a container of.";
        m_report->Add(m_containerPlace);
    }
}

void MetaFileWholeRead::ResolveReferences(KelSAX::ISAXReader&) {
    m_references.Resolve(m_layout);
    FindCategoryLevel();
    BoundItems();
}

/// Nobody's, and said once: its attributes count as asked for.
bool MetaFileWholeRead::Skip(KelSAX::ISAXReader& reader) {
    Open(Kind::Skipped);
    if (reader.HasReport()) {
        reader.GetAttributes();
    }
    return true;
}

bool MetaFileWholeRead::ReadDictionary(KelSAX::ISAXReader& reader) {
    Open(Kind::Skipped);
    if (ResourceDictionary* const dictionary = m_layout.GetResourceDictionary()) {
        reader.PushHandler(new ResourceDictionaryFileRead(dictionary));
    } else {
        reader.NoteDropped(L"The layout has no dictionary; the translations were passed over.");
    }
    return true;
}

bool MetaFileWholeRead::ReadInNode(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (IsPassedThrough(tag)) {
        Open(Kind::Node);
        return tag != Word::AdditionalConfiguration;
    }
    if (BeginsOptions(tag, reader)) {
        Open(Kind::Options);
        return true;
    }
    bool const isMet = EnterOwnNode(tag);
    if (isMet || AddNode(tag, reader)) {
        ReadNode(reader, !isMet && !IsAt(&Layout::m_jobConfigurator));
    }
    return true;
}

bool MetaFileWholeRead::ReadItem(std::string const& tag, KelSAX::ISAXReader& reader) {
    m_currentNode->m_nodeName = StringConversion::Utf8ToNative(tag);
    Open(Kind::Node);
    ReadValue(reader, true);
    return true;
}

/// The first element of an "Options".
bool MetaFileWholeRead::ReadInOptions(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag == Word::Option && !reader.ReadAttribute(m_word, Word::Type)) {
        m_open.back().kind = Kind::Choices;
        SetOptions(*m_currentNode, {}); // they come in place of an attribute's, which have no names to show
        return ReadChoice(tag, reader);
    }
    if (AddNode(std::string(Word::Options), reader)) {
        m_open.back() = {Kind::Node, Here()};
        return ReadInNode(tag, reader);
    }
    return true;
}

bool MetaFileWholeRead::ReadChoice(std::string const& tag, KelSAX::ISAXReader& reader) {
    Open(Kind::Leaf);
    if (tag != Word::Option) {
        return false;
    }
    std::wstring value, displayName;
    reader.ReadValue(value);
    reader.ReadAttribute(displayName, Word::DisplayName);
    m_currentNode->AddOption(value, displayName);
    return true;
}

bool MetaFileWholeRead::IsPassedThrough(std::string_view tag) const {
    bool const isStructure = tag == Word::ParameterStructure || tag == Word::AdditionalConfiguration;
    bool const isOverride = tag == Word::InheritOverrides || tag == Word::OverrideEntry;
    return isOverride || (isStructure && IsAt(&Layout::m_profileEditor));
}

/// A group can be called so, too: below a node that is no text, with attributes, or with a text.
bool MetaFileWholeRead::BeginsOptions(std::string_view tag, KelSAX::ISAXReader& reader) const {
    bool const isText = m_currentNode->m_type == String || m_currentNode->m_type == Options;
    return isText && tag == Word::Options && !reader.HasAttributes() && Text::Trim(reader.GetText()).empty();
}

/// Such a node is met wherever the one that holds it is open. Of the version each node is met once: who reads
/// a file that tells one with ReadFile has two of them, and writes two.
bool MetaFileWholeRead::EnterOwnNode(std::string_view tag) {
    // By owner: in a copied layout the handles lead to nodes of the source, which no read may touch.
    for (OwnNode const& own : OwnNodes) {
        LayoutNode const* const node = NodeOf(own.handle);
        bool const isInJob = own.isAlsoInJob && IsAt(&Layout::m_jobConfigurator);
        if (node != nullptr && (node->GetOwner() == m_currentNode || isInJob) && IsNamed(own.handle, tag)) {
            GoTo(own.handle);
            return true;
        }
    }
    if (m_currentNode == &m_layout && m_version != nullptr && Text::EqualsUtf8(m_version->m_name, tag)) {
        GoTo(Place{std::exchange(m_version, nullptr), Here().level + 1});
        return true;
    }
    // One that is there already is the node of its name; of others each element makes its own.
    LayoutNode* const met = m_versions.empty() || m_currentNode == &m_layout
                                ? nullptr
                                : m_currentNode->m_children.Find(StringConversion::Utf8ToNative(tag));
    if (met == nullptr || m_versions.erase(met) == 0) {
        return false;
    }
    GoTo(Place{met, Here().level + 1});
    return true;
}

bool MetaFileWholeRead::AddNode(std::string const& tag, KelSAX::ISAXReader& reader) {
    bool const isJob = m_currentNode == &m_layout && tag == Word::JobConfigurator;
    auto node = std::make_unique<LayoutNode>(nullptr, Group, nullptr);
    node->m_name = StringConversion::Utf8ToNative(tag);
    bool const isAdded = Add(std::move(node), reader);
    if (isAdded && isJob) {
        m_layout.m_jobConfigurator = m_currentNode;
    }
    return isAdded;
}

void MetaFileWholeRead::ReadNode(KelSAX::ISAXReader& reader, bool isNew) {
    if (!ReadMarks(reader, isNew)) {
        Open(Kind::Node);
        ReadValue(reader, isNew);
        return;
    }
    Open(Kind::Container);
    if (reader.HasReport()) {
        m_containerPlace = reader.GetPlace();
    }
    ReadAttributes(*m_currentNode, true, m_references, reader);
    if (m_currentNode->m_isList && m_currentNode->m_multiplicity != 0) {
        m_lists.push_back(m_currentNode);
    }
}

/// What the node is a container of; it can be several at once. A node that the layout has is what the layout
/// made it, as what it looks for there has to be found: only the category list of its own is a container.
bool MetaFileWholeRead::ReadMarks(KelSAX::ISAXReader& reader, bool isNew) {
    if (!reader.HasAttributes()) {
        return false;
    }
    LayoutNode& node = *m_currentNode;
    bool const hasType = reader.ReadAttribute(m_word, Word::Type);
    bool const isList = hasType && IsListWord(m_word);
    bool const isTransformed = isList && m_word == Word::TransformListContainer;
    bool const isCategoryList = reader.ReadAttribute(m_word, Word::CategoriesName);
    bool const isProfileList = reader.ReadAttribute(m_word, Word::ProfilesXmlName) || isCategoryList;
    if (isNew) {
        node.m_isList = isList;
        node.m_canBeTransformed = isTransformed;
        node.m_isCategoryList = isCategoryList;
        node.m_isProfileList = isProfileList;
    } else if ((isList && !node.m_isList) || (isCategoryList && !node.m_isCategoryList) ||
               (isProfileList && !node.m_isProfileList)) {
        reader.NoteDropped(L"A node that the layout has is no such container; the mark was passed over.");
    }
    return (isList && node.m_isList) || (isProfileList && node.m_isProfileList);
}

void MetaFileWholeRead::ReadValue(KelSAX::ISAXReader& reader, bool isNew) {
    LayoutNode& node = *m_currentNode;
    ReadType(reader, isNew);
    if (node.m_type != Group || !Text::Trim(reader.GetText()).empty()) {
        reader.ReadValue(node.m_defaultValue);
        NoteUnlessValue(node.m_defaultValue, node.m_type, "The default", reader);
    }
    ReadAttributes(node, false, m_references, reader);
    if (node.m_type == OptionsFromProfiles && !node.m_profileName.empty()) {
        if (!IsContainer(node)) {
            node.m_nodeName = node.m_profileName; // as SetTypeFromProfiles leaves it
        }
        m_references.AddChoice(node, reader);
    }
}

/// Without a word a new node is what its text says, and one that the layout has stays what it is.
void MetaFileWholeRead::ReadType(KelSAX::ISAXReader& reader, bool isNew) {
    LayoutNode& node = *m_currentNode;
    eTypeLayoutNode type = node.m_type;
    bool const hasWord = reader.ReadAttribute(m_word, Word::Type);
    if (!isNew && type == Group) {
        if (hasWord && !IsListWord(m_word)) {
            reader.NoteDropped(L"A node that the layout has is a group; the type was passed over.");
        }
        return;
    }
    if (hasWord) {
        type = TypeOf(&Word::TypeRow::inMetaFile, m_word, reader);
    } else if (isNew) {
        type = Text::Trim(reader.GetText()).empty() ? Group : Double;
    }
    if (type == Distance && node.m_type != Distance) {
        node.m_postfix = L"mm"; // as a node made for one has
    }
    node.m_type = type;
    std::wstring options;
    if ((!hasWord || type == String) && reader.ReadAttribute(options, Word::Options)) {
        SetOptions(node, options);
    }
}

/// A few bytes can ask for more items than memory holds, since those of a list in another one multiply.
void MetaFileWholeRead::BoundItems() {
    if (m_lists.empty() || CountBags(m_layout, true) <= std::max(MostBags, 16 * CountBags(m_layout, false))) {
        return;
    }
    for (LayoutNode* const list : m_lists) {
        list->m_multiplicity = 0;
    }
    if (m_report != nullptr) {
        ReadReport::Entry entry;
        entry.kind = ReadReport::Kind::DroppedValue;
        entry.sentence =
            L"A database would begin with more items than can be meant; all lists of the file begin "
            L"with none.";
        m_report->Add(std::move(entry));
    }
}

/// A file can have the nodes that a layout with categories is made with.
void MetaFileWholeRead::FindCategoryLevel() {
    LayoutNode const* const editor = NodeOf(&Layout::m_profileEditor);
    if (editor == nullptr || NodeOf(&Layout::m_categories) != nullptr) {
        return;
    }
    auto const find = [&](std::string_view name) {
        return editor->m_children.Find(StringConversion::Utf8ToNative(name));
    };
    LayoutNode* const categories = find(Word::Categories);
    // One that is only called so is a parameter like any other.
    if (categories != nullptr && categories->m_isCategoryList) {
        m_layout.m_categories = categories;
        LayoutNode* const generic = find(Word::GenericParameters);
        bool const isGroup = generic != nullptr && generic->m_type == Group && !IsContainer(*generic);
        if (isGroup && NodeOf(&Layout::m_genericParameters) == nullptr) {
            m_layout.m_genericParameters = generic;
        }
    }
}

} // namespace Zantrel
