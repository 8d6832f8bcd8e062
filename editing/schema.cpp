// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/schema.h>

#include "editing/default_profile.h"
#include "editing/findings.h"
#include "editing/place_kind.h"
#include "editing/schema_facets.h"
#include "editing/xml_text.h"

#include <zantrel/database/value_type.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/tag_writer.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// All types stand side by side at the top, so that a schema is as flat for a deep layout as for any other,
// and those of one node are named after it and numbered. A node's own type is that of what it holds, with the
// flags of a group, a leaf or an item; around it, for a container, stands "NAME.List", and what profiles have
// beyond it is added by "NAME.Profile" and "NAME.Default".
//
// Whoever reads a schema must know at each element which declaration it is: names that stand twice among
// siblings are declared once, then, and for what no schema has words for anything is taken.

namespace Zantrel::Editing {

namespace {

using Attributes = std::initializer_list<std::pair<std::string_view, std::wstring_view>>;

constexpr std::wstring_view AnyType = L"Anything"; ///< a type that takes whatever comes
constexpr std::wstring_view GeneralWord = L"GenericParameters";

/// One element by scope.
class Element : MSAXTagWriter {
public:
    Element(KelSAX::ISAXWriter& writer, std::string_view name, Attributes attributes = {})
        : MSAXTagWriter(writer, "xs:" + std::string(name)) {
        for (auto const& [attribute, value] : attributes) {
            writer.WriteAttribute(attribute, value);
        }
    }
};

/// The type of a leaf without facets.
std::wstring_view PlainTypeOf(LayoutNode const& node) {
    return VisitValueType(node.m_type, [](auto tag) -> std::wstring_view {
        using T = typename decltype(tag)::Type;
        return std::is_same_v<T, NoValue>        ? L"Empty"
               : std::is_same_v<T, std::int32_t> ? L"Integer"
               : std::is_same_v<T, double>       ? L"Number"
               : std::is_same_v<T, bool>         ? L"Truth"
               : std::is_same_v<T, std::wstring> ? L"Text"
                                                 : L"Attachment";
    });
}

/// A text for a person, with marks for what no document can hold.
std::wstring Carried(std::wstring const& text) {
    std::wstring carried = text;
    if (!IsXmlText(text)) {
        auto const isPlain = [](wchar_t c) { return c == L'\n' || (c >= L' ' && c <= L'~'); };
        std::replace_if(
            carried.begin(), carried.end(), [&](wchar_t c) { return !isPlain(c); }, L'?');
    }
    return carried;
}

class SchemaDocument {
public:
    SchemaDocument(ParameterLayout const& layout, KelSAX::ISAXWriter& writer)
        : m_layout(layout), m_writer(writer) {}

    void Write();

private:
    /// The types of one node that are still to be written. The facets are kept, as finding them again would
    /// mean compiling the pattern again.
    struct Types {
        LayoutNode const* node;
        std::wstring name;
        SchemaFacets facets;
    };
    /// How the children of a group can be said: in any order; in any number, where a name stands
    /// twice, since the words for any order take each name once; or not at all, where one has a name that is
    /// none of an element.
    enum class Model { AnyOrder, AnyNumber, Anything };

    void WriteFlags();
    void WriteValueTypes();
    void WriteOtherTypes();
    void WriteValues(std::string_view facet, std::initializer_list<std::wstring_view> values);
    void WriteFlagGroup(std::wstring_view name, std::initializer_list<std::wstring_view> flags);
    void UseFlags(std::wstring_view group) { Element(m_writer, "attributeGroup", {{"ref", group}}); }

    std::wstring TypeOf(LayoutNode const& node, SchemaFacets facets);
    std::wstring ContentTypeOf(Types const& types) const;
    void WriteElement(std::wstring_view name, std::wstring_view type, std::wstring_view least,
                      std::wstring_view most = L"1");
    void WriteNode(LayoutNode const& node, std::wstring_view name, bool isRequired);
    void WriteDocumentation(LayoutNode const& node, std::vector<std::wstring> const& notes);
    void WriteNotes(std::vector<std::wstring> const& notes);
    void WriteAnyChildren();

    void WriteTypes(Types const& types);
    void WriteLeafType(Types const& types);
    void WriteGroupType(Types const& types);
    Model ModelOf(LayoutNode const& node) const;
    void WriteChildren(LayoutNode const& node, Model model);
    void WriteListType(Types const& types);
    void WriteItems(Types const& types);
    void WriteProfiles(Types const& types);
    void WriteProfileTypes(Types const& types);

    ParameterLayout const& m_layout;
    KelSAX::ISAXWriter& m_writer;
    std::vector<Types> m_types; ///< those that elements ask for, in turn
};

void SchemaDocument::Write() {
    WriteNotes({L"Generic parameter files of " + Quoted(m_layout.m_name) +
                L": names, types, limits and choices as the layout has them."});
    LayoutNode const* const editor = m_layout.m_profileEditor.GetNode();
    if (editor != nullptr) {
        WriteNode(*editor, m_layout.m_name, true);
    } else {
        Element(m_writer, "element", {{"name", m_layout.m_name}, {"type", L"Empty"}});
    }
    WriteFlags();
    WriteValueTypes();
    WriteOtherTypes();
    for (std::size_t i = 0; i < m_types.size() && !m_writer.HasFailed(); ++i) {
        // By index and taken out, since what asks for more types moves the others.
        Types const types = std::move(m_types[i]); // more come while it is written
        WriteTypes(types);
    }
}

// --- What every layout has ---

void SchemaDocument::WriteValues(std::string_view facet, std::initializer_list<std::wstring_view> values) {
    for (std::wstring_view const value : values) {
        Element(m_writer, facet, {{"value", value}});
    }
}

void SchemaDocument::WriteFlagGroup(std::wstring_view name, std::initializer_list<std::wstring_view> flags) {
    Element const group(m_writer, "attributeGroup", {{"name", name}});
    for (std::wstring_view const flag : flags) {
        Element(m_writer, "attribute", {{"name", flag}, {"type", L"Flag"}});
    }
}

void SchemaDocument::WriteFlags() {
    {
        // The schema's own type for flags doesn't take the words with capital letters that files have. Based
        // on a token, so that blanks around the word are passed over, as readers do.
        Element const type(m_writer, "simpleType", {{"name", L"Flag"}});
        Element const restriction(m_writer, "restriction", {{"base", L"xs:token"}});
        WriteValues("enumeration", {L"True", L"False", L"true", L"false", L"1", L"0"});
    }
    WriteFlagGroup(L"Flags", {L"ReadOnly", L"Hidden"});
    WriteFlagGroup(L"ContainerFlags", {L"ReadOnly", L"Hidden", L"DisableAddRemove"});
    WriteFlagGroup(L"ProfileFlags", {L"NameReadOnly", L"CanBeDeleted", L"UserDefaultProfile"});
}

void SchemaDocument::WriteValueTypes() {
    static constexpr std::wstring_view types[][2] = {
        {L"Integer", L"xs:int"}, {L"Number", L"xs:double"}, {L"Truth", L"Flag"}, {L"Text", L"xs:string"}};
    for (auto const& [name, base] : types) {
        Element const type(m_writer, "complexType", {{"name", name}});
        Element const content(m_writer, "simpleContent");
        Element const extension(m_writer, "extension", {{"base", base}});
        UseFlags(L"Flags");
    }
}

void SchemaDocument::WriteOtherTypes() {
    {
        Element const type(m_writer, "complexType", {{"name", L"Empty"}});
        UseFlags(L"Flags");
    }
    {
        Element const type(m_writer, "complexType", {{"name", L"Attachment"}});
        {
            Element const children(m_writer, "all");
            WriteElement(L"Name", L"xs:string", L"0");
            WriteElement(L"Data", L"xs:base64Binary", L"0");
        }
        UseFlags(L"Flags");
    }
    Element const type(m_writer, "complexType", {{"name", AnyType}, {"mixed", L"true"}});
    WriteAnyChildren();
    Element(m_writer, "anyAttribute", {{"processContents", L"skip"}});
}

// --- Elements ---

/// Of what a node's element holds.
std::wstring SchemaDocument::TypeOf(LayoutNode const& node, SchemaFacets facets) {
    if (node.Size() == 0 && facets.rows.empty() && !IsContainer(node)) {
        return std::wstring(PlainTypeOf(node));
    }
    // By its number a name is one of its own, also beside the plain types, none of which has a point in it.
    std::wstring name = IsElementName(node.m_name) ? node.m_name : L"Node";
    name += L'.' + std::to_wstring(m_types.size() + 1);
    m_types.push_back({&node, name, std::move(facets)});
    return IsContainer(node) ? name + L".List" : name;
}

/// Of one entry of a container.
std::wstring SchemaDocument::ContentTypeOf(Types const& types) const {
    bool const isPlain = types.node->Size() == 0 && types.facets.rows.empty();
    return isPlain ? std::wstring(PlainTypeOf(*types.node)) : types.name;
}

void SchemaDocument::WriteElement(std::wstring_view name, std::wstring_view type, std::wstring_view least,
                                  std::wstring_view most) {
    Element(m_writer, "element", {{"name", name}, {"type", type}, {"minOccurs", least}, {"maxOccurs", most}});
}

void SchemaDocument::WriteNode(LayoutNode const& node, std::wstring_view name, bool isRequired) {
    SchemaFacets facets = FacetsOf(node);
    std::vector<std::wstring> const notes = facets.notes;
    std::wstring const type = TypeOf(node, std::move(facets));
    Element const element(m_writer, "element", {{"name", name}, {"type", type}});
    if (!isRequired) {
        m_writer.WriteAttribute("minOccurs", std::string_view("0"));
    }
    WriteDocumentation(node, notes);
}

void SchemaDocument::WriteDocumentation(LayoutNode const& node, std::vector<std::wstring> const& notes) {
    bool const hasOwn = IsContainer(node) && !node.m_containerDisplayName.empty();
    std::vector<std::wstring> all = {hasOwn ? node.m_containerDisplayName : node.m_displayName};
    if (IsContainer(node)) {
        all.push_back(node.m_containerDescription);
    }
    all.push_back(node.m_description);
    if (!node.m_postfix.empty() && node.m_type != Group) {
        all.push_back(L"Unit: " + node.m_postfix);
    }
    if (node.m_type == OptionsFromProfiles) {
        std::wstring const& list = node.m_profileName.empty() ? node.m_nodeName : node.m_profileName;
        all.push_back(L"The name of a profile of " + Quoted(list) + L'.');
    }
    all.insert(all.end(), notes.begin(), notes.end());
    WriteNotes(all);
}

void SchemaDocument::WriteNotes(std::vector<std::wstring> const& notes) {
    if (std::all_of(notes.begin(), notes.end(), [](auto const& note) { return note.empty(); })) {
        return;
    }
    Element const annotation(m_writer, "annotation");
    for (std::wstring const& note : notes) {
        if (!note.empty()) {
            Element const documentation(m_writer, "documentation");
            m_writer.WriteValue(std::wstring_view(Carried(note)));
        }
    }
}

/// Of what has names that are none of elements.
void SchemaDocument::WriteAnyChildren() {
    WriteNotes({L"There are no words for what this may hold, so anything is taken."});
    Element const children(m_writer, "sequence");
    Element(m_writer, "any",
            {{"minOccurs", L"0"}, {"maxOccurs", L"unbounded"}, {"processContents", L"skip"}});
}

// --- The types of one node ---

void SchemaDocument::WriteTypes(Types const& types) {
    LayoutNode const& node = *types.node;
    if (IsContainer(node)) {
        WriteListType(types);
    }
    if (node.m_isProfileList) {
        WriteProfileTypes(types);
    }
    if (node.Size() != 0) {
        WriteGroupType(types);
    } else if (!types.facets.rows.empty()) {
        WriteLeafType(types);
    }
}

void SchemaDocument::WriteLeafType(Types const& types) {
    Element const type(m_writer, "complexType", {{"name", types.name}});
    Element const content(m_writer, "simpleContent");
    Element const restriction(m_writer, "restriction", {{"base", PlainTypeOf(*types.node)}});
    for (auto const& [facet, value] : types.facets.rows) {
        Element(m_writer, facet, {{"value", value}});
    }
}

SchemaDocument::Model SchemaDocument::ModelOf(LayoutNode const& node) const {
    std::vector<std::wstring_view> names;
    for (LayoutNode const* const child : node.m_children) {
        if (!IsElementName(child->m_name)) {
            return Model::Anything;
        }
        names.push_back(child->m_name);
    }
    std::sort(names.begin(), names.end());
    // Sorted, so that many children cost no more than sorting them.
    bool const areTwo = std::adjacent_find(names.begin(), names.end()) != names.end();
    return areTwo ? Model::AnyNumber : Model::AnyOrder;
}

void SchemaDocument::WriteGroupType(Types const& types) {
    Model const model = ModelOf(*types.node);
    Element const type(m_writer, "complexType", {{"name", types.name}});
    if (model == Model::Anything) {
        WriteAnyChildren();
    } else {
        WriteChildren(*types.node, model);
    }
    UseFlags(L"Flags");
}

/// Missing may be what IsValidParameterFile doesn't miss, and the group that a filter leaves out. Below what
/// isn't a group no values are, and none in a subtree that was copied: their elements stay empty.
void SchemaDocument::WriteChildren(LayoutNode const& node, Model model) {
    bool const mayMiss = IsContainer(node) || &node == m_layout.m_profileEditor.GetNode();
    std::vector<LayoutNode const*> children(node.m_children.begin(), node.m_children.end());
    auto const comesBefore = [](LayoutNode const* a, LayoutNode const* b) { return a->m_name < b->m_name; };
    if (model == Model::AnyNumber) {
        WriteNotes({L"Names stand twice here: they may come in any number, and anything is taken in them."});
        std::stable_sort(children.begin(), children.end(), comesBefore);
    }
    bool const isAny = model == Model::AnyNumber;
    Element const content(m_writer, isAny ? "choice" : "all");
    if (isAny) {
        m_writer.WriteAttribute("minOccurs", std::string_view("0"));
        m_writer.WriteAttribute("maxOccurs", std::string_view("unbounded"));
    }
    for (auto child = children.begin(); child != children.end() && !m_writer.HasFailed();) {
        // All of one name are declared once, and where they are several, anything is taken in them.
        auto const behind = isAny ? std::upper_bound(child, children.end(), *child, comesBefore) : child + 1;
        LayoutNode const& first = **child;
        bool const isRequired =
            isAny || (!mayMiss && first.m_writeToParameterFile && first.m_name != GeneralWord);
        // By parent, too: see above of subtrees that were copied.
        if (behind - child == 1 && node.m_type == Group && first.Parent() == &node) {
            WriteNode(first, first.m_name, isRequired);
        } else {
            WriteElement(first.m_name, AnyType, isRequired ? L"1" : L"0");
        }
        child = behind;
    }
}

/// More entries than an index counts there can't be.
std::wstring Times(std::uint64_t count, std::wstring_view otherwise) {
    bool const isToldOf = count != 0 && count <= std::numeric_limits<std::int32_t>::max();
    return isToldOf ? std::to_wstring(count) : std::wstring(otherwise);
}

void SchemaDocument::WriteListType(Types const& types) {
    LayoutNode const& node = *types.node;
    Element const type(m_writer, "complexType", {{"name", types.name + L".List"}});
    if (!IsElementName(node.m_nodeName)) {
        WriteAnyChildren();
    } else if (node.m_isProfileList) {
        WriteProfiles(types);
    } else {
        WriteItems(types);
    }
    UseFlags(L"ContainerFlags");
}

void SchemaDocument::WriteItems(Types const& types) {
    LayoutNode const& node = *types.node;
    bool const hasRange = node.m_multiplicityMax == 0 || node.m_multiplicityMin <= node.m_multiplicityMax;
    if (!hasRange) {
        WriteNotes({L"No number of entries is within the limits, so they aren't checked."});
    }
    Element const entries(m_writer, "sequence");
    WriteElement(node.m_nodeName, ContentTypeOf(types), Times(hasRange ? node.m_multiplicityMin : 0, L"0"),
                 Times(hasRange ? node.m_multiplicityMax : 0, L"unbounded"));
}

/// Profiles in any number, and among them at most one default profile.
/// Each element of the sequence is known by its tag at once, which a choice of both with a number of its own
/// would not give: the default profile is taken wherever it stands, and once.
void SchemaDocument::WriteProfiles(Types const& types) {
    std::wstring const& entry = types.node->m_nodeName;
    std::wstring const profile = types.name + L".Profile";
    if (entry == DefaultProfileWord) {
        WriteNotes({L"Profiles and the default profile are called alike here."});
    }
    Element const entries(m_writer, "sequence");
    WriteElement(entry, profile, L"0", L"unbounded");
    if (entry != DefaultProfileWord) {
        Element const defaultAndMore(m_writer, "sequence", {{"minOccurs", L"0"}});
        WriteElement(DefaultProfileWord, types.name + L".Default", L"1");
        WriteElement(entry, profile, L"0", L"unbounded");
    }
}

void SchemaDocument::WriteProfileTypes(Types const& types) {
    // Both add their flags, and a profile its name, to the type of what they hold. Where profiles are called
    // as the default profile is, one declaration stands for both, and the name can't be asked for.
    std::wstring const base = ContentTypeOf(types);
    LayoutNode const& node = *types.node;
    bool const isText = node.Size() == 0 && base != L"Empty" && base != L"Attachment";
    for (bool const isDefault : {true, false}) {
        Element const type(m_writer, "complexType",
                           {{"name", types.name + (isDefault ? L".Default" : L".Profile")}});
        Element const content(m_writer, isText ? "simpleContent" : "complexContent");
        Element const extension(m_writer, "extension", {{"base", base}});
        if (!isDefault) {
            Element(m_writer, "attribute",
                    {{"name", L"Name"},
                     {"type", L"xs:string"},
                     {"use", node.m_nodeName != DefaultProfileWord ? L"required" : L"optional"}});
        }
        UseFlags(L"ProfileFlags");
    }
}

class SchemaHandler final : public ISAXPersistHelper {
public:
    explicit SchemaHandler(ParameterLayout const& layout) : m_layout(layout) {}
    bool Write(KelSAX::ISAXWriter& writer) const override {
        SchemaDocument(m_layout, writer).Write();
        return true;
    }

private:
    ParameterLayout const& m_layout;
};

KelAM::SaxUtilities::WriteOptions DocumentOptions() {
    KelAM::SaxUtilities::WriteOptions options;
    options.m_callerOption = true;
    options.m_rootTag = "xs:schema";
    options.m_namespaces.emplace_back(L"xs", L"http://www.w3.org/2001/XMLSchema");
    return options;
}

/// Of a layout whose root is no element there are no files.
bool HasFiles(ParameterLayout const& layout, WriteReport* report) {
    bool const has = IsElementName(layout.m_name);
    if (!has && report != nullptr) {
        *report = {};
        report->m_sentence =
            L"The layout's root is called " + Quoted(layout.m_name) + L", which is no name of an element.";
    }
    return has;
}

} // namespace

bool WriteSchema(ParameterLayout const& layout, std::wstring const& path, WriteReport* report) {
    return HasFiles(layout, report) &&
           KelAM::SaxUtilities::WriteFile(path, SchemaHandler(layout), DocumentOptions(), report);
}

bool WriteSchema(ParameterLayout const& layout, std::basic_ostream<char>& out, WriteReport* report) {
    return HasFiles(layout, report) &&
           KelAM::SaxUtilities::WriteStream(out, SchemaHandler(layout), DocumentOptions(), report);
}

} // namespace Zantrel::Editing
