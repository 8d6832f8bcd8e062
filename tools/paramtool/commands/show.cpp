// SPDX-License-Identifier: Apache-2.0
//
// To look at: LookWalk, which tells of each place whether users see it; GetDefault and GetListNode, by which
// the same place is found in a database that holds only the layout's defaults.

#include "commands.h"
#include "common/cursors.h"
#include "parameter_source.h"

#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

struct Options {
    std::wstring file;
    bool changed = false;
    bool hidden = false;
};

/// What the layout gives the places of a walk: entries that a new database lacks are measured against what a
/// new one of them would hold, the default profile or the template of a list's items.
class Defaults {
public:
    explicit Defaults(ParameterLayout const* layout) : m_database(layout) {}

    /// Goes to the place of the walk; the ones around it come first.
    void Follow(PlaceView const& place) {
        // A walk comes to what is around a place before the place, so that its way stands here already.
        m_views.resize(place.GetDepth());
        m_views.push_back(place.GetDepth() == 0 ? ParameterView(m_database.GetProfileEditor())
                                                : Below(m_views.back(), place));
    }
    ParameterView const& Get() const { return m_views.back(); }
    /// Whether a new database doesn't have the place: an entry.
    bool LacksIt(PlaceView const& place) const {
        return place.GetKind() == PlaceKind::Profile ||
               (place.GetKind() == PlaceKind::Item &&
                place.GetIndex() >= m_views[place.GetDepth() - 1].GetSize());
    }

private:
    static ParameterView Below(ParameterView const& above, PlaceView const& place) {
        if (!place.IsEntry()) {
            return above.Get(place.GetLayoutNode());
        }
        bool const isItem = place.GetKind() == PlaceKind::Item && place.GetIndex() < above.GetSize();
        return isItem ? above.GetListNode(place.GetIndex()) : above.GetDefault();
    }

    ParameterDatabase const m_database;
    std::vector<ParameterView> m_views; ///< of this place and those around it
};

/// Value and flags, as a line says them behind the name: " = 0.03 mm (read-only)".
std::wstring TextOf(ParameterView const& node) {
    std::wstring const value = ShownValue(node);
    std::wstring const flags = Host::FlagsText(node);
    return (value.empty() ? L"" : L" = " + value) + (flags.empty() ? L"" : L" (" + flags + L')');
}

std::wstring TitleOf(PlaceView const& place) {
    switch (place.GetKind()) {
    case PlaceKind::Item:
        return L'[' + std::to_wstring(place.GetIndex()) + L']';
    case PlaceKind::DefaultProfile:
        return L"[default]";
    case PlaceKind::Profile:
        return L'[' + std::wstring(place.GetName()) + L']';
    default:
        return std::wstring(place.GetName());
    }
}

std::wstring LineOf(PlaceView const& place) {
    std::wstring line = std::wstring(2 * (place.GetDepth() - 1), L' ') + TitleOf(place);
    ParameterView const& node = place.GetCursor();
    if (node.IsContainer()) {
        line += L": " + std::to_wstring(node.GetSize()) + L" x " + node.GetLayoutNode()->m_nodeName;
    }
    return line + TextOf(node);
}

/// By what is told of them; texts where they stand, as they may be long.
bool HaveSameValue(ParameterView const& one, ParameterView const& other) {
    auto const *const text = one.FindValue<std::wstring>(), *const otherText =
                                                                other.FindValue<std::wstring>();
    return text != nullptr && otherText != nullptr ? *text == *otherText
                                                   : Host::ValueText(one) == Host::ValueText(other);
}

bool IsChanged(PlaceView const& place, Defaults const& defaults) {
    ParameterView const& node = place.GetCursor();
    return defaults.LacksIt(place) || !HaveSameValue(node, defaults.Get()) ||
           Host::FlagsText(node) != Host::FlagsText(defaults.Get()) ||
           (node.IsContainer() && node.GetSize() != defaults.Get().GetSize());
}

Json JsonOf(LookWalk const& walk, bool isChanged) {
    static constexpr char const* kinds[] = {"group",       "leaf",           "list",   "item",
                                            "profileList", "defaultProfile", "profile"};
    PlaceView const& place = walk.GetPlace();
    LayoutNode const& layout = *place.GetLayoutNode();
    Json json{{"path", Utf8(walk.GetPathBelowTop())}, {"kind", kinds[static_cast<int>(place.GetKind())]}};
    if (place.IsLeaf()) {
        json["value"] = Paramtool::JsonOf(place.GetCursor());
        if (!layout.m_postfix.empty()) {
            json["unit"] = Utf8(layout.m_postfix);
        }
    }
    json["changed"] = isChanged;
    json["visible"] = walk.GetLook().isVisible;
    json["editable"] = walk.GetLook().isEditable;
    return json;
}

/// Prints places with the headings that they stand under, each heading once and only when it is needed.
class Tree {
public:
    explicit Tree(Output const& output) : m_output(output) {}
    void Step(PlaceView const& place) {
        // The editor itself has no line, and so depth 1 is the first level.
        m_headings.resize(place.GetDepth() - 1);
        m_headings.push_back(LineOf(place));
    }
    void Print(bool isBold) {
        for (std::wstring& heading : m_headings) {
            if (!heading.empty()) {
                m_output.Print(heading,
                               isBold && &heading == &m_headings.back() ? Style::Bold : Style::Plain);
            }
            heading.clear();
        }
    }

private:
    Output const& m_output;
    std::vector<std::wstring> m_headings; ///< one a level, empty once printed
};

int Show(Context& context, Options const& options) {
    Output& output = context.output;
    LayoutSource const source(context.layout);
    ParameterFile const file(output, source, options.file);
    Defaults defaults(source.m_layout.get());
    Tree tree(output);
    Json places = Json::array();
    std::size_t unseen = 0;
    for (LookWalk walk(file.m_database); walk.Next();) {
        PlaceView const& place = walk.GetPlace();
        defaults.Follow(place);
        if (place.GetDepth() == 0) {
            continue;
        }
        bool const isChanged = IsChanged(place, defaults);
        if (!walk.GetLook().isVisible && !options.hidden) {
            // Only counted, and gone on below: each hidden place counts for itself.
            unseen += isChanged ? 1 : 0;
            continue;
        }
        tree.Step(place);
        if (isChanged || !options.changed) {
            if (output.m_isJson) {
                places.push_back(JsonOf(walk, isChanged));
            } else {
                tree.Print(isChanged);
            }
        }
    }
    if (unseen != 0) {
        output.Remark(L"also changed, where users of this file don't see it: " + std::to_wstring(unseen) +
                      L"; --hidden shows it");
    }
    output.m_json["hiddenChanges"] = unseen;
    output.m_json["places"] = std::move(places);
    return Same;
}

} // namespace

Action DeclareShow(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.Flag("--changed", to->changed, "only what differs from the layout's defaults");
    line.Flag("--hidden", to->hidden, "also what users of the file don't see");
    return [to](Context& context) { return Show(context, *to); };
}

} // namespace Paramtool
