// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_read.h"

#include "layout_files/meta_file_words.h"
#include "layout_files/resource_dictionary_read.h"
#include "text/numbers.h"
#include "text/unicode.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::MetaFileWord;

namespace {

using Layout = ParameterLayout;

/// An element that leads from one node of every layout to another. Null is the root.
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

bool ParameterLayoutIOMetaFileRead::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (EnterSection(tag)) {
        return true;
    }
    if (IsAt(nullptr)) {
        if (tag == Word::JobConfigurator) {
            AddJobConfigurator(reader);
            return true;
        }
        if (tag == Word::ResourceDictionary) {
            return ReadDictionary(reader);
        }
        if (tag == Word::Entry) { // of a dictionary that nobody wants
            return true;
        }
    }
    if (IsAt(&Layout::m_profileEditor)) {
        if (tag == Word::ParameterStructure) { // what it holds goes into "ProfileEditor"
            return true;
        }
        if (tag == Word::AdditionalConfiguration) {
            return false;
        }
    }
    if (IsAt(&Layout::m_versionNode)) {
        ReadVersionPart(tag, reader);
    } else if (tag != Word::InheritOverrides && tag != Word::OverrideEntry) {
        ReadParameter(tag, reader);
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

void ParameterLayoutIOMetaFileRead::AddJobConfigurator(KelSAX::ISAXReader& reader) {
    std::wstring const name = StringConversion::Utf8ToNative(Word::JobConfigurator);
    Add(std::make_unique<LayoutNode>(name.c_str(), Group, nullptr), reader);
    m_layout.m_jobConfigurator = m_currentNode;
}

bool ParameterLayoutIOMetaFileRead::ReadDictionary(KelSAX::ISAXReader& reader) {
    ResourceDictionary* const dictionary = m_layout.GetResourceDictionary();
    if (dictionary != nullptr) {
        reader.PushHandler(new ResourceDictionaryFileRead(dictionary));
    }
    return dictionary != nullptr;
}

void ParameterLayoutIOMetaFileRead::ReadParameter(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (OpenContainer(tag, reader)) {
        return;
    }
    eTypeLayoutNode type = Group;
    if (reader.ReadAttribute(m_word, Word::Type)) {
        type = TypeOf(Word::Types, m_word, reader);
    } else if (reader.ReadAttribute(m_word, Word::Options)) {
        type = Options;
    } else if (!Text::Trim(reader.GetText()).empty()) {
        type = Double; // what files of older machines hold without a word
    }
    auto node = std::make_unique<LayoutNode>(nullptr, type, nullptr);
    node->m_name = HasContainer() ? m_pendingContainerTag : StringConversion::Utf8ToNative(tag);
    if (type != Group) {
        reader.ReadValue(node->m_defaultValue);
    }
    if (type == OptionsFromProfiles) {
        reader.ReadAttribute(node->m_profileName, Word::ProfileName);
    }
    reader.ReadAttribute(node->m_propName, Word::PropertyName);
    reader.ReadAttribute(node->m_displayName, Word::DisplayName);
    CloseContainer(*node, tag);
    Add(std::move(node), reader);
}

/// A container makes no node by itself, but with the next parameter, wherever that stands.
bool ParameterLayoutIOMetaFileRead::OpenContainer(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (reader.ReadAttribute(m_word, Word::Type) && m_word == Word::ListContainer) {
        m_pendingList = true;
    } else if (reader.ReadAttribute(m_word, Word::ProfilesXmlName)) {
        m_pendingProfile = true;
    } else if (reader.ReadAttribute(m_word, Word::CategoriesName)) {
        m_pendingCategory = true;
    } else {
        return false;
    }
    m_pendingContainerTag = StringConversion::Utf8ToNative(tag);
    m_pendingContainerDisplayName.clear();
    reader.ReadAttribute(m_pendingContainerDisplayName, Word::DisplayName);
    return true;
}

void ParameterLayoutIOMetaFileRead::CloseContainer(LayoutNode& node, std::string const& itemTag) {
    if (!HasContainer()) {
        return;
    }
    std::wstring const itemName = StringConversion::Utf8ToNative(itemTag);
    if (std::exchange(m_pendingList, false)) {
        node.SetList(true, itemName.c_str(), std::wstring());
    }
    if (std::exchange(m_pendingProfile, false)) {
        node.SetProfile(true, itemName.c_str());
    }
    if (std::exchange(m_pendingCategory, false)) {
        node.SetCategoryList(true, itemName.c_str());
    }
    node.m_containerDisplayName = std::exchange(m_pendingContainerDisplayName, std::wstring());
    m_pendingContainerTag.clear();
}

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
