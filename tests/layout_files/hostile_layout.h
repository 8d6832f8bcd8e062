// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/layout_files/layout_formats.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/layout/resource_dictionary.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

/// Free of the test framework, for the fuzz target.
namespace TestSupport {

/// The texts between the bars of `words`.
inline std::vector<std::string_view> Split(std::string_view words) {
    std::vector<std::string_view> texts;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != words.npos; begin = end + 1) {
        end = words.find('|', begin);
        texts.push_back(words.substr(begin, end - begin));
    }
    return texts;
}

/// A well-formed document of the words of both formats, where they belong and anywhere else. `choose(n)`
/// gives any number below n.
template <class Choose> std::string HostileDocument(Choose choose) {
    static std::vector<std::string_view> const tags =
        Split("PropertyNode|PropertyNode|PropertyNode|MachineParameters|BuildTicket|Defaults|"
              "PartOverrides|A|A|B|C|KlvrPropertyTemplate|Version|Major|Minor|ProfileEditor|"
              "ParameterStructure|AdditionalConfiguration|JobConfigurator|PlatformConfigurator|"
              "PlatformOptions|PartOptions|PartConfigurator|ResourceDictionary|Entry|Translation|"
              "InheritOverrides|OverrideEntry|Options|p:ProfileEditor|p:PropertyNode|R");
    static std::vector<std::string_view> const attributes =
        Split("Name|Name|Type|Type|ProfilesXMLName|CategoriesName|ProfileName|PropertyName|DisplayName|"
              "DisplayNameContainer|Default|Options|List|ProfileList|Key|Language");
    static std::vector<std::string_view> const values =
        Split("A|B|C|a b||en-US|ListContainer|TransformListContainer|Complex|integer|number|bool|enum|"
              "Int|Double|Distance|Bool|Options|OptionsFromProfiles|FileAbsolute|FileAttachment|"
              "StandardOptions|&#10;&lt;&amp;");
    auto const any = [&](auto const& words) { return words[choose(std::size(words))]; };

    std::string document;
    std::vector<std::string_view> open;
    auto const openElement = [&](std::string_view tag) {
        document.append("<").append(tag);
        std::set<std::string_view> names;
        for (std::size_t count = choose(4); count != 0; --count) {
            if (std::string_view const name = any(attributes); names.insert(name).second) {
                document.append(" ").append(name).append("='").append(any(values)).append("'");
            }
        }
        document += open.empty() ? " xmlns:p='u'>" : ">";
        open.push_back(tag);
    };
    auto const closeElement = [&] {
        document.append("</").append(open.back()).append(">");
        open.pop_back();
    };
    openElement(any(tags));
    for (std::size_t steps = choose(250); steps != 0; --steps) {
        std::size_t const step = choose(16);
        if (step < 7) {
            openElement(any(tags));
        } else if (step == 7 && choose(20) == 0) {
            std::string_view const tag = any(tags);
            for (std::size_t count = choose(300); count != 0; --count) {
                openElement(tag);
            }
        } else if (step < 10) {
            document += any(values);
        } else if (open.size() > 1) {
            closeElement();
        }
    }
    while (!open.empty()) {
        closeElement();
    }
    return document;
}

/// How many levels of nodes there are below.
inline std::size_t Depth(LayoutNode const& node) {
    std::size_t depth = 0;
    for (LayoutNode const* const child : node.m_children) {
        depth = std::max(depth, 1 + Depth(*child));
    }
    return depth;
}

/// Whether each node below names the one that it stands in, and can be asked all that a node can be asked.
inline bool AnswersQueries(ParameterLayout const& layout, LayoutNode const& node, std::size_t& patience) {
    for (LayoutNode const* const child : node.m_children) {
        std::vector<LayoutNode const*> nodes;
        std::deque<LayoutNode const*> path;
        if (patience != 0) { // each question may go through the whole tree
            --patience;
            if (layout.GetReferredNodes(child, nodes) == nodes.empty() ||
                !child->GetQueryPath(layout, path)) {
                return false;
            }
        }
        if (child->m_parent != &node || !AnswersQueries(layout, *child, patience)) {
            return false;
        }
    }
    return true;
}

/// Reads the document and does with the layout all that a host can do. Gives what was wrong, or nothing.
inline std::string FaultOf(LayoutFormat const& format, std::string const& document) {
    ResourceDictionary dictionary;
    ParameterLayout layout;
    layout.SetResourceDictionary(document.size() % 2 == 0 ? &dictionary : nullptr);
    ReadReport report;
    bool const isRead = ReadText(format, layout, document, &report);
    bool const isAccepted =
        std::none_of(report.m_entries.begin(), report.m_entries.end(),
                     [](auto const& entry) { return entry.kind <= ReadReport::Kind::RefusedDocument; });
    std::size_t patience = 10;
    if (isRead != isAccepted || Depth(layout) > 256 || !AnswersQueries(layout, layout, patience)) {
        return "the layout that was read";
    }
    std::vector<LayoutNode const*> nodes;
    layout.GetBuildTicketNodes(nodes);
    layout.GetBuildTicketNodesPartOverrides(nodes);
    std::set<std::wstring> names;
    layout.GetUsedPropertyNames(names);

    ParameterLayout const copy(layout);
    std::string const slim = WriteText(PropertyTemplate, layout);
    ParameterLayout fromSlim, again;
    if (WriteText(PropertyTemplate, copy) != slim || !ReadText(PropertyTemplate, fromSlim, slim) ||
        !ReadText(PropertyTemplate, again, WriteText(PropertyTemplate, fromSlim)) ||
        Outline(again) != Outline(fromSlim)) {
        return "the property template that was written";
    }
    bool const hasXmlNames = format.readFile == MetaFile.readFile;
    if (WriteText(MetaFile, layout).empty() && hasXmlNames) {
        return "the meta file that was written";
    }
    ParameterLayout fromMeta;
    ReadText(MetaFile, fromMeta, WriteText(MetaFile, copy)); // an option more may be a level too many

    ParameterDatabase database(&layout), back(&layout);
    std::string const values = WriteText(database);
    bool const isBack = !values.empty() && ReadText(back, values);
    return isBack || !hasXmlNames ? "" : "the database";
}

} // namespace TestSupport
