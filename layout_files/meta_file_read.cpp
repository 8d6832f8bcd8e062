// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_read.h"

#include "layout_files/meta_file_attributes.h"
#include "layout_files/read_values.h"
#include "layout_files/resource_dictionary_read.h"
#include "text/numbers.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::LayoutWord;

// Element names are those of nodes, so that a tag says what it means only together with the place where it
// stands: a section that every layout has, a word of the format at one of a few places, or else a parameter.
//
// A container is two elements that make one node. The outer one has the name; the inner one, whose tag
// becomes the name of an entry, has type and content. Between the two start tags the container is pending. Of
// the two end tags as a rule only the outer one bears the node's name, and that one leaves it.

namespace {

using Layout = ParameterLayout;

/// An element, named after the node that it stands for, that leads from one node of every layout to another:
/// its start tag from where it may stand to that node, its end tag from wherever the walk is to where it goes
/// on. Null is the root.
struct Way {
    Layout::pNode Layout::*from;
    Layout::pNode Layout::*to;
};

// "Version" is none of these: the layout's handle holds the node below it, so a file makes a second one.
constexpr Way WaysIn[] = {
    {nullptr, &Layout::m_versionNode},
    {nullptr, &Layout::m_profileEditor},
    {nullptr, &Layout::m_partConfigurator},
    {nullptr, &Layout::m_platformConfigurator},
    {&Layout::m_platformConfigurator, &Layout::m_platformOptions},
    {&Layout::m_platformConfigurator, &Layout::m_partOptions},
    {&Layout::m_jobConfigurator, &Layout::m_partConfigurator},
    {&Layout::m_jobConfigurator, &Layout::m_platformConfigurator},
};

constexpr Way WaysOut[] = {
    {&Layout::m_profileEditor, nullptr},
    {&Layout::m_partConfigurator, nullptr},
    {&Layout::m_platformConfigurator, nullptr},
    {&Layout::m_platformOptions, &Layout::m_platformConfigurator},
    {&Layout::m_partOptions, &Layout::m_platformConfigurator},
    {&Layout::m_jobConfigurator, nullptr},
};

} // namespace

void ParameterLayoutIOMetaFileRead::ReadRoot(KelSAX::ISAXReader& reader) {
    CountPassedOver(reader, {}, m_passedOver);
}

void ParameterLayoutIOMetaFileRead::ResolveReferences(KelSAX::ISAXReader&) {
    m_passedOver.Report(L"ReadWholeFile");
}

bool ParameterLayoutIOMetaFileRead::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    using Self = ParameterLayoutIOMetaFileRead;
    struct Rule {
        Anchor at;
        std::string_view tag;
        bool (Self::*read)(KelSAX::ISAXReader& reader);
    };
    static constexpr Rule grammar[] = {
        {Root, Word::JobConfigurator, &Self::AddJobConfigurator},
        {Root, Word::ResourceDictionary, &Self::ReadDictionary},
        {Root, Word::Entry, &Self::PassEntryThrough}, // of a dictionary that nobody wants
        {&Layout::m_profileEditor, Word::ParameterStructure, &Self::PassThrough},
        {&Layout::m_profileEditor, Word::AdditionalConfiguration, &Self::PassOver},
    };
    // First: a section is none of the parameters, whatever its attributes say.
    if (EnterSection(tag)) {
        CountPassedOver(reader, {}, m_passedOver);
        return true;
    }
    // A word of the format counts only where it stands; anywhere else a parameter may be called so.
    for (Rule const& rule : grammar) {
        if (tag == rule.tag && IsAt(rule.at)) {
            return (this->*rule.read)(reader);
        }
    }
    bool const isOverride = tag == Word::InheritOverrides || tag == Word::OverrideEntry;
    if (!isOverride && !IsAt(&Layout::m_versionNode)) { // whose parts a file can't change
        ReadParameter(tag, reader);
    } else if (reader.HasReport()) {
        reader.GetAttributes(); // nobody's, whatever they are
    }
    return true;
}

bool ParameterLayoutIOMetaFileRead::EnterSection(std::string_view tag) {
    auto const* const way = std::find_if(std::begin(WaysIn), std::end(WaysIn), [&](Way const& candidate) {
        return IsAt(candidate.from) && IsNamed(candidate.to, tag);
    });
    if (way == std::end(WaysIn)) {
        return false;
    }
    GoTo(way->to);
    return true;
}

/// No layout has this node from the start. Of several in a file the handle leads to the last.
bool ParameterLayoutIOMetaFileRead::AddJobConfigurator(KelSAX::ISAXReader& reader) {
    std::wstring const name = StringConversion::Utf8ToNative(Word::JobConfigurator);
    CountPassedOver(reader, {}, m_passedOver);
    Add(std::make_unique<LayoutNode>(name.c_str(), Group, nullptr), reader);
    m_layout.m_jobConfigurator = m_currentNode;
    return true;
}

/// Without a dictionary to fill the element isn't taken, and its entries come to this handler, which has a
/// rule for them.
bool ParameterLayoutIOMetaFileRead::ReadDictionary(KelSAX::ISAXReader& reader) {
    ResourceDictionary* const dictionary = m_layout.GetResourceDictionary();
    if (dictionary != nullptr) {
        reader.PushHandler(new ResourceDictionaryFileRead(dictionary));
    } else {
        reader.NoteDropped(L"The layout has no dictionary; the translations were passed over.");
    }
    return dictionary != nullptr;
}

/// What the element holds is taken as if the element weren't there.
bool ParameterLayoutIOMetaFileRead::PassThrough(KelSAX::ISAXReader&) { return true; }

bool ParameterLayoutIOMetaFileRead::PassEntryThrough(KelSAX::ISAXReader& reader) {
    reader.KnowAttributes({Word::Key});
    return true;
}

/// The same, and a report hears of the element.
bool ParameterLayoutIOMetaFileRead::PassOver(KelSAX::ISAXReader&) { return false; }

void ParameterLayoutIOMetaFileRead::ReadParameter(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (OpenContainer(tag, reader)) {
        return;
    }
    eTypeLayoutNode const type = ReadType(reader);
    auto node = std::make_unique<LayoutNode>(nullptr, type, nullptr);
    node->m_name = StringConversion::Utf8ToNative(tag);
    if (type != Group) {
        reader.ReadValue(node->m_defaultValue);
    }
    if (type == OptionsFromProfiles) {
        reader.ReadAttribute(node->m_profileName, Word::ProfileName);
    }
    reader.ReadAttribute(node->m_propName, Word::PropertyName);
    reader.ReadAttribute(node->m_displayName, Word::DisplayName);
    CountPassedOver(reader, {Word::Type, Word::ProfileName, Word::PropertyName, Word::DisplayName},
                    m_passedOver);
    if (reader.HasReport()) {
        bool const isChoice = tag == Word::Option && reader.GetAncestorTag(1) == Word::Options;
        // Kept as parameters or not at all: the report is to say who takes them as choices.
        if (isChoice || (type != Options && reader.HasAttribute(Word::Options))) {
            m_passedOver.Count(L"choices");
        }
        if (type != Group && !isChoice) {
            NoteUnlessValue(node->m_defaultValue, type, "The default", reader);
        }
    }
    if (m_pending.IsPending()) {
        std::exchange(m_pending, Container()).Complete(*node, tag);
    }
    Add(std::move(node), reader);
}

eTypeLayoutNode ParameterLayoutIOMetaFileRead::ReadType(KelSAX::ISAXReader& reader) {
    if (reader.ReadAttribute(m_word, Word::Type)) {
        return TypeOf(&Word::TypeRow::inMetaFile, m_word, reader);
    }
    if (reader.ReadAttribute(m_word, Word::Options)) {
        return Options;
    }
    bool const hasText = !Text::Trim(reader.GetText()).empty();
    return hasText ? Double : Group; // a number is what files of older machines hold without a word
}

bool ParameterLayoutIOMetaFileRead::OpenContainer(std::string const& tag, KelSAX::ISAXReader& reader) {
    // Of several marks the first counts, so that the node is one kind of container. The other reader takes
    // them all.
    std::string_view mark = Word::Type;
    if (reader.ReadAttribute(m_word, mark) && m_word == Word::ListContainer) {
        m_pending.isList = true;
    } else if (mark = Word::ProfilesXmlName; reader.HasAttribute(mark)) {
        m_pending.isProfileList = true;
    } else if (mark = Word::CategoriesName; reader.HasAttribute(mark)) {
        m_pending.isCategoryList = true;
    } else {
        return false;
    }
    CountPassedOver(reader, {mark, Word::DisplayName}, m_passedOver);
    m_pending.tag = StringConversion::Utf8ToNative(tag);
    m_pending.displayName.clear();
    reader.ReadAttribute(m_pending.displayName, Word::DisplayName);
    return true;
}

void ParameterLayoutIOMetaFileRead::Container::Complete(LayoutNode& node, std::string const& itemTag) {
    std::wstring const itemName = StringConversion::Utf8ToNative(itemTag);
    node.m_name = std::move(tag);
    node.m_containerDisplayName = std::move(displayName);
    if (isList) {
        node.SetList(true, itemName.c_str(), std::wstring());
    }
    if (isProfileList) {
        node.SetProfile(true, itemName.c_str());
    }
    if (isCategoryList) {
        node.SetCategoryList(true, itemName.c_str());
    }
}

/// By name, since not every start tag has made a node. The node comes before the sections: one that a file
/// calls like a section ends as a node.
void ParameterLayoutIOMetaFileRead::HandleEndTag(std::string_view tag) {
    if (Text::EqualsUtf8(m_currentNode->m_name, tag)) {
        if (m_currentNode->m_type == Group && m_currentNode->Size() == 0) {
            m_currentNode->m_type = String; // an element with nothing in it is a parameter without a default
        }
        GoUp();
        return;
    }
    for (Way const& way : WaysOut) {
        if (IsNamed(way.from, tag)) {
            GoTo(way.to);
            return;
        }
    }
}
