// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/migration.h>

#include "editing/compared_value.h"
#include "editing/findings.h"
#include "editing/paired_places.h"
#include "editing/place_flags.h"
#include "editing/type_word.h"
#include "editing/value_conversion.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/editing/value_text.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace Zantrel::Editing {

namespace {

using Kind = MigrationStep::Kind;
using Pair = EntryPair<ParameterNode>;

constexpr std::wstring_view NoSuchPlace = L"The new layout has no such place.";
constexpr std::wstring_view NewPlace = L"The old layout had no such place.";
constexpr std::wstring_view OutOfEntry = L"The renaming leads out of the entry that the place stands in.";
constexpr std::wstring_view NoSuchFlag = L"There is no such flag at the new place.";
constexpr std::wstring_view OtherContainer = L"Items don't become profiles, nor profiles items.";
constexpr std::wstring_view OnlyOne = L"There is a single value now, which another entry gives.";
constexpr std::wstring_view IntoContainer = L"A single value is the first entry of a list now.";
constexpr std::wstring_view OutOfContainer = L"The first entry of a list is a single value now.";

// --- Values of another type ---

template <class To> std::optional<To> FromNumber(double number) {
    // Only what is exactly the same value there: nothing is rounded on the way.
    if constexpr (std::is_same_v<To, bool>) {
        return number == 0 || number == 1 ? std::optional(number == 1) : std::nullopt;
    } else {
        using Limits = std::numeric_limits<std::int32_t>;
        bool const isWhole =
            number >= Limits::min() && number <= Limits::max() && std::trunc(number) == number;
        return isWhole ? std::optional(static_cast<To>(number)) : std::nullopt;
    }
}
template <> std::optional<double> FromNumber(double number) { return number; }

/// The same value as one of type To, if there is one. `text` is the value as a text.
template <class To, class From> std::optional<To> Convert(From const& value, std::wstring const& text) {
    constexpr bool isText = std::is_same_v<From, std::wstring>;
    if constexpr (std::is_same_v<From, To>) {
        return value;
    } else if constexpr (std::is_same_v<From, KelAM::FileContent> || std::is_same_v<To, KelAM::FileContent>) {
        return std::nullopt;
    } else if constexpr (std::is_same_v<To, std::wstring>) {
        return text;
    } else if constexpr (isText) {
        return ParseValue(value, TypeTag<To>());
    } else {
        return FromNumber<To>(value);
    }
}

/// Whether the value could be taken. A cursor may lack the value that its node should have: on a second node
/// of a name, which shares the content of the first, and on choices of the driver's until they are set.
template <class From>
bool SetConverted(ParameterNode const& cursor, From const& value, std::wstring const& text) {
    return VisitValueType(cursor.m_pNode->m_type, [&](auto tag) {
        using To = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<To, NoValue>) {
            return false;
        } else {
            std::optional<To> const converted = Convert<To>(value, text);
            bool const isTaken = converted && CanTake<To>(cursor);
            isTaken ? SetValue(cursor, *converted) : void();
            return isTaken;
        }
    });
}

std::wstring NoValueOf(std::wstring const& text, eTypeLayoutNode type) {
    return Quoted(text) + L" is no value of the type " + TypeWord(type) + L".";
}

// --- What is put down ---

// The new database is filled along the old one, by the operations that any host has. When a container is come
// to, its new entries are made, all of them, and the walk then goes into each with its old one; so an entry
// is complete before the next begins, as in a file. Every place of the old database comes once: in a pair,
// alone, or below a container that is alone, which is gone through as a whole. So nothing is lost without a
// step.

class Migrator {
public:
    Migrator(std::vector<MigrationStep>& steps, Renamed const& renamed)
        : m_steps(steps), m_renamed(renamed) {}

    bool OnEntry(Pair const& pair);
    void OnPair(Region<ParameterView> const& first, Region<ParameterNode> const& second, SpotPair pair,
                std::vector<Pair>& entries);

private:
    struct Step {
        ParameterView from;
        ParameterNode to;
        std::wstring path, newPath;
    };

    void Add(Kind kind, Step const& step, std::wstring_view what, std::wstring before, std::wstring after,
             std::wstring_view reason) {
        m_steps.push_back({kind, step.path, step.newPath, std::wstring(what), std::move(before),
                           std::move(after), std::wstring(reason)});
    }
    static Kind KindOfTaken(Step const& step) {
        return step.path == step.newPath ? Kind::Taken : Kind::Renamed;
    }

    void TakeValue(Step const& step);
    void TakeFlags(Step const& step);
    void DropPlace(ParameterView const& place, std::wstring const& path, std::wstring_view reason);
    void DropContent(ParameterView const& place, std::wstring const& path, std::wstring_view reason);

    std::vector<MigrationStep>& m_steps;
    Renamed const& m_renamed;
};

void Migrator::TakeValue(Step const& step) {
    VisitValue(step.from, [&](auto const& value) {
        eTypeLayoutNode const before = step.from.GetLayoutNode()->m_type, after = step.to.m_pNode->m_type;
        std::wstring shown = ShownText(step.from);
        if (SetConverted(step.to, value, TextOf(step.from))) {
            bool const isConverted = before != after;
            std::wstring const reason =
                isConverted ? TypeWord(before) + L" is " + TypeWord(after) + L" now." : std::wstring();
            Add(isConverted ? Kind::Converted : KindOfTaken(step), step, {}, std::move(shown),
                ShownText(step.to), reason);
        } else {
            std::wstring const reason = NoValueOf(shown, after);
            Add(Kind::Refused, step, {}, std::move(shown), ShownText(step.to), reason);
        }
    });
}

void Migrator::TakeFlags(Step const& step) {
    for (PlaceFlag const& flag : PlaceFlags) {
        if (!IsSet(step.from, flag)) {
            continue;
        }
        if (HasFlag(step.to, flag)) {
            ParameterNode to = step.to;
            (to.*flag.set)(true);
            Add(KindOfTaken(step), step, flag.word, L"true", L"true", {});
        } else {
            m_steps.push_back({Kind::Dropped,
                               step.path,
                               {},
                               std::wstring(flag.word),
                               L"true",
                               {},
                               std::wstring(NoSuchFlag)});
        }
    }
}

bool HasValueOrFlag(ParameterView const& place) {
    return VisitValue(place, [](auto const&) {}) ||
           std::any_of(std::begin(PlaceFlags), std::end(PlaceFlags),
                       [&](PlaceFlag const& flag) { return IsSet(place, flag); });
}

void Migrator::DropPlace(ParameterView const& place, std::wstring const& path, std::wstring_view reason) {
    Step const step{place, {}, path, {}};
    if (VisitValue(place, [](auto const&) {})) {
        Add(Kind::Dropped, step, {}, ShownText(place), {}, reason);
    }
    for (PlaceFlag const& flag : PlaceFlags) {
        if (IsSet(place, flag)) {
            Add(Kind::Dropped, step, flag.word, L"true", {}, reason);
        }
    }
}

/// With all that stands below.
void Migrator::DropContent(ParameterView const& place, std::wstring const& path, std::wstring_view reason) {
    for (Walk<ParameterView> walk(place); walk.Next();) {
        std::wstring const here = JoinPath(path, walk.Path());
        if (walk.Node().IsValid() && (walk.Kind() == PlaceKind::Item || walk.Kind() == PlaceKind::Profile)) {
            Add(Kind::Dropped, {walk.Node(), {}, here, {}}, {}, {}, {}, reason);
        }
        DropPlace(walk.Node(), here, reason);
    }
}

// --- Entries ---

/// Both are of the same kind, the new one as its layout has it. Entries are made from the layout's defaults
/// and not from the template or default profile, so that what finds no value has what the steps say.
std::vector<Pair> NewEntries(ParameterView const& from, std::wstring const& path, ParameterNode to,
                             std::wstring const& newPath) {
    std::vector<Pair> pairs;
    LayoutNode const& layout = *to.m_pNode;
    if (!layout.m_isProfileList) {
        // The number of items is that of the old list, whatever the new layout would begin with.
        to.Clear(); // of the items that formatting gave it
    }
    std::wstring const& oldName = from.GetLayoutNode()->m_nodeName;
    for (Entry<ParameterView>& entry : EntriesOf(from, path)) {
        ParameterNode const added = entry.kind == PlaceKind::DefaultProfile ? to.GetDefault()
                                    : entry.kind == PlaceKind::Item
                                        ? to.AddListNode(false)
                                        : to.AddProfile(std::wstring(entry.name).c_str(), false);
        std::size_t const behindName = path.size() + (path.empty() ? 0 : 1) + oldName.size();
        std::wstring newEntryPath = JoinPath(newPath, layout.m_nodeName + entry.path.substr(behindName));
        pairs.push_back({entry.cursor, added, entry.kind, std::move(entry.path), std::move(newEntryPath)});
    }
    return pairs;
}

/// The single value becomes an entry.
Pair IntoEntry(ParameterView const& from, std::wstring path, ParameterNode to, std::wstring const& newPath) {
    std::wstring const& name = to.m_pNode->m_nodeName;
    if (to.m_pNode->m_isProfileList) {
        return {from,
                to.GetDefault(),
                PlaceKind::DefaultProfile,
                std::move(path),
                JoinPath(newPath, name + std::wstring(DefaultProfileStep)),
                IntoContainer};
    }
    // The first item that formatting made, if it made any: behind it the value wouldn't be the first.
    ParameterNode const item = to.GetSize() != 0 ? to.GetListNode(0) : to.AddListNode(false);
    return {from, item, PlaceKind::Item, std::move(path), JoinPath(newPath, name + L"[0]"), IntoContainer};
}

/// One entry becomes the single value; all others stand alone.
std::vector<Pair> OutOfEntries(ParameterView const& from, std::wstring const& path, ParameterNode const& to,
                               std::wstring const& newPath) {
    PlaceKind const single =
        from.GetLayoutNode()->m_isProfileList ? PlaceKind::DefaultProfile : PlaceKind::Item;
    std::vector<Pair> pairs;
    bool isTaken = false;
    for (Entry<ParameterView>& entry : EntriesOf(from, path)) {
        // A list's template is no entry that a user has made, and so none that is dropped.
        bool const isTemplate = single == PlaceKind::Item && entry.kind == PlaceKind::DefaultProfile;
        if (!isTaken && entry.kind == single) {
            isTaken = true;
            pairs.push_back({entry.cursor, to, entry.kind, std::move(entry.path), newPath, OutOfContainer});
        } else if (!isTemplate) {
            pairs.push_back({entry.cursor, {}, entry.kind, std::move(entry.path), {}, OnlyOne});
        }
    }
    return pairs;
}

/// The entries themselves; what they hold comes as pairs.
bool Migrator::OnEntry(Pair const& pair) {
    if (!pair.first.IsValid()) {
        return false;
    }
    bool const isNamed = pair.kind == PlaceKind::Item || pair.kind == PlaceKind::Profile;
    Step const step{pair.first, pair.second, pair.firstPath, pair.secondPath};
    if (!pair.second.IsValid()) {
        std::wstring_view const reason = pair.note.empty() ? NoSuchPlace : pair.note;
        if (isNamed) {
            Add(Kind::Dropped, step, {}, {}, {}, reason);
        }
        DropContent(pair.first, pair.firstPath, reason);
        return false;
    }
    if (isNamed || !pair.note.empty()) {
        Add(pair.note.empty() ? KindOfTaken(step) : Kind::Converted, step, {}, {}, {}, pair.note);
    }
    return true;
}

void Migrator::OnPair(Region<ParameterView> const& first, Region<ParameterNode> const& second, SpotPair pair,
                      std::vector<Pair>& entries) {
    ParameterView const from = pair.first != Nowhere ? first.At(pair.first) : ParameterView();
    ParameterNode const to = pair.second != Nowhere ? second.At(pair.second) : ParameterNode();
    if (pair.first == Nowhere && pair.isTop && to.IsValid()) {
        std::wstring const path = second.Path(pair.second);
        Add(Kind::New, {from, to, path, path}, {}, {}, ShownText(to), NewPlace);
    }
    bool const isContainer = pair.first != Nowhere && IsContainer(first.Kind(pair.first));
    bool const isContainerNow = pair.second != Nowhere && IsContainer(second.Kind(pair.second));
    bool const isBare = !isContainer && !isContainerNow && !HasValueOrFlag(from);
    if (!from.IsValid() || isBare) {
        return;
    }
    std::wstring const path = first.Path(pair.first);
    if (!to.IsValid()) {
        bool const isRenamed = m_renamed.to.count(&first.Layout(pair.first)) != 0;
        std::wstring_view const reason = isRenamed ? OutOfEntry : NoSuchPlace;
        isContainer ? DropContent(from, path, reason) : DropPlace(from, path, reason);
        return;
    }
    std::wstring const newPath = second.Path(pair.second);
    if (isContainer && isContainerNow && first.Kind(pair.first) != second.Kind(pair.second)) {
        DropContent(from, path, OtherContainer);
    } else if (isContainer) {
        TakeFlags({from, to, path, newPath});
        entries =
            isContainerNow ? NewEntries(from, path, to, newPath) : OutOfEntries(from, path, to, newPath);
    } else if (isContainerNow) {
        entries.push_back(IntoEntry(from, path, to, newPath));
    } else {
        TakeFlags({from, to, path, newPath});
        TakeValue({from, to, path, newPath});
    }
}

// --- Renamings ---

/// The first node of each path. A name may hold what joins names, so a path may be that of several.
std::unordered_map<std::wstring, LayoutNode const*> NodesByPath(LayoutNode const* top) {
    std::unordered_map<std::wstring, LayoutNode const*> nodes;
    if (top != nullptr) {
        std::vector<Spot> const spots = SpotsOf(*top);
        for (std::size_t i = 1; i < spots.size(); ++i) {
            nodes.try_emplace(PathOf(spots, i, L'/'), spots[i].layout);
        }
    }
    return nodes;
}

Renamed Resolve(std::vector<Renaming> const& renamings, LayoutNode const* from, LayoutNode const* to) {
    Renamed renamed;
    if (renamings.empty()) {
        return renamed;
    }
    auto const oldNodes = NodesByPath(from), newNodes = NodesByPath(to);
    for (Renaming const& renaming : renamings) {
        auto const oldNode = oldNodes.find(renaming.from);
        auto const newNode = newNodes.find(renaming.to);
        if (bool const isOld = oldNode == oldNodes.end(); isOld || newNode == newNodes.end()) {
            throw std::invalid_argument(
                (isOld ? "the old layout has no node \"" : "the new layout has no node \"") +
                StringConversion::NativeToUtf8(isOld ? renaming.from : renaming.to) +
                "\" that a renaming names");
        }
        auto const [at, isNew] = renamed.to.try_emplace(oldNode->second, newNode->second);
        // Saying the same renaming twice is none; two ways from one node or to one node are.
        bool const isTaken = isNew && !renamed.taken.insert(newNode->second).second;
        if (isTaken || at->second != newNode->second) {
            throw std::invalid_argument("two renamings contradict each other, one of them from \"" +
                                        StringConversion::NativeToUtf8(renaming.from) + "\" to \"" +
                                        StringConversion::NativeToUtf8(renaming.to) + '"');
        }
    }
    return renamed;
}

} // namespace

Migration Migrate(ParameterDatabase const& from, ParameterLayout const& to,
                  std::vector<Renaming> const& renamings) {
    Migration migration{ParameterDatabase(&to), {}};
    ParameterView const old = from.GetProfileEditor();
    ParameterNode const fresh = migration.database.GetProfileEditor();
    Renamed const renamed = Resolve(renamings, old.GetLayoutNode(), fresh.m_pNode);
    Migrator migrator(migration.steps, renamed);
    MatchRules const rules{MatchRules::Containers::Open, false, &renamed};
    PairedWalk<ParameterNode, Migrator>(migrator, rules).Run({old, fresh, PlaceKind::Group, {}, {}});
    return migration;
}

} // namespace Zantrel::Editing
