// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/walk.h>

#include "database/find_bag.h"
#include "database/layout_shapes.h"
#include "store/read_ahead.h"

#include <zantrel/layout/layout_node.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

// A walk stands on a place and keeps the levels that this place lies in, outermost first: level i gives out
// the places of depth i + 1. A place becomes a level itself only when the walk goes in, so a leaf costs no
// more than its look-up. The path is put together from the levels, as far as it was asked for: m_path begins
// with the steps of the first m_named levels as they stand now, and each of these knows where its step ends.

namespace Zantrel {

namespace {

/// What stands directly below one place, and how much of it was given.
struct Level {
    enum class Content { Children, Items, Profiles };

    // A constructor of its own, since one that is made up clears all bytes first, which costs more than the
    // rest of going in.
    Level(LayoutNode const* ofLayout, PersistentProperties* ofBag) : layout(ofLayout), bag(ofBag) {}

    Content content = Content::Children;
    LayoutNode const* layout;
    PersistentProperties* bag;                     ///< null: children that stand on nothing
    std::size_t given = 0;                         ///< how many children, items or named profiles
    LayoutNodes::const_iterator child{}, behind{}; ///< the next child, and the end of the row
    std::size_t pathEnd = 0;                       ///< behind the step to the place that was given last

    ItemSequence* items = nullptr;
    std::size_t size = 0;   ///< of the items
    bool areLeaves = false; ///< the entries of a container

    bool hasGivenDefault = false;
    PersistentProperties::Iterator entry{}; ///< the next to look at
    ReadAhead ahead{};                      ///< of that
    NamedProperty first{{}, nullptr};       ///< the first entry of the name that was looked at last
    std::wstring_view profile;              ///< the name that was given last
};

void AppendStep(Level const& level, std::wstring& path) {
    if (!path.empty()) {
        path.push_back(L'_');
    }
    switch (level.content) {
    case Level::Content::Children:
        path.append((*std::prev(level.child))->m_name);
        return;
    case Level::Content::Items:
        path.append(level.layout->m_nodeName).append(L"[").append(std::to_wstring(level.given - 1));
        path.append(L"]");
        return;
    case Level::Content::Profiles:
        path.append(level.layout->m_nodeName);
        if (level.given == 0) {
            path.append(L"::Default::");
        } else {
            path.append(L"[").append(level.profile).append(L"]");
        }
        return;
    }
}

PlaceKind KindOf(ParameterNode const& at, LayoutNode const& layout, TwofoldContainers twofold) {
    if (at.m_isContainer) {
        bool const isTakenForList = layout.m_isList && twofold == TwofoldContainers::AreLists;
        if (layout.m_isProfileList && !isTakenForList) {
            return PlaceKind::ProfileList;
        }
        if (layout.m_isList) {
            return PlaceKind::List;
        }
        if (layout.m_isCategoryList) {
            return PlaceKind::ProfileList;
        }
    }
    return layout.Size() == 0 ? PlaceKind::Leaf : PlaceKind::Group;
}

/// As many as an item may well have.
constexpr std::size_t BlockBytes = 512;

bool IsWholeContainer(PlaceKind kind) { return kind == PlaceKind::List || kind == PlaceKind::ProfileList; }

} // namespace

/// What moves a walk from place to place.
class WalkState {
public:
    WalkState(AnyWalk::Place& place, SameNames sameNames, TwofoldContainers twofold)
        : m_place(place), m_at(place.at.m_node), m_sameNames(sameNames), m_twofold(twofold) {}

    bool Next();
    AnyWalk::Row PeekRow();
    PersistentProperties const* BagAfter() const;
    void PassTo(std::size_t position) noexcept;
    std::wstring_view Path();

private:
    void StandOn(PlaceKind kind, bool isLeaf);
    void StandOnEntry(Level const& container, PlaceKind kind, PersistentProperties* bag, std::size_t index,
                      std::wstring_view name);
    bool StandOnTop();
    void GoIn();
    bool GoOn(Level& level);
    static PersistentProperties* BagOf(PersistentProperties& bag, LayoutNode const& child, std::size_t index);
    bool NextChild(Level& level);
    bool NextItem(Level& level);
    bool DefaultProfile(Level& level);
    bool NextProfile(Level& level);

    AnyWalk::Place& m_place;
    ParameterNode& m_at; ///< the cursor in m_place
    SameNames m_sameNames;
    TwofoldContainers m_twofold;
    bool m_hasBegun = false;
    std::vector<Level> m_levels;
    std::wstring m_path;
    std::size_t m_named = 0;
};

bool WalkState::Next() {
    if (!m_hasBegun) {
        m_hasBegun = true;
        return StandOnTop();
    }
    if (m_place.goesIn) {
        GoIn();
    }
    while (!m_levels.empty()) {
        if (GoOn(m_levels.back())) {
            m_place.depth = m_levels.size();
            m_named = std::min(m_named, m_levels.size() - 1);
            return true;
        }
        m_levels.pop_back();
    }
    return false;
}

// Standing on a place

/// After the cursor has been set, and what is called and counted. Short, so that it stands where it is used.
inline void WalkState::StandOn(PlaceKind kind, bool isLeaf) {
    if (m_at.m_contentList != nullptr) {
        m_at.m_contentList.reset(); // of a Query at the place before
    }
    m_place.kind = kind;
    m_place.isLeaf = isLeaf;
    m_place.goesIn = !isLeaf && m_at.m_pNode != nullptr && (m_at.IsValid() || !IsWholeContainer(kind));
}

bool WalkState::StandOnTop() {
    if (m_at.m_pNode == nullptr) {
        return false;
    }
    m_place.layout = m_at.m_pNode;
    m_place.name = m_at.m_pNode->m_name;
    PlaceKind const kind = KindOf(m_at, *m_at.m_pNode, m_twofold);
    StandOn(kind, kind == PlaceKind::Leaf);
    return true;
}

void WalkState::StandOnEntry(Level const& container, PlaceKind kind, PersistentProperties* bag,
                             std::size_t index, std::wstring_view name) {
    m_at.m_pNode = container.layout;
    m_at.m_pProperties = bag;
    m_at.m_isContainer = false;
    m_at.m_pParentProperties = container.bag;
    m_place.layout = container.layout;
    m_place.name = name;
    m_place.index = index;
    StandOn(kind, container.areLeaves);
}

// Levels

/// Makes a level of the place.
void WalkState::GoIn() {
    m_place.goesIn = false;
    Level& level = m_levels.emplace_back(m_place.layout, m_at.m_pProperties);
    if (m_place.kind == PlaceKind::List) {
        level.content = Level::Content::Items;
        level.areLeaves = level.layout->Size() == 0;
        level.items = FindItems(*level.bag);
        level.size = level.items != nullptr ? static_cast<std::size_t>(level.items->GetNumProperties()) : 0;
    } else if (m_place.kind == PlaceKind::ProfileList) {
        level.content = Level::Content::Profiles;
        level.areLeaves = level.layout->Size() == 0;
        level.entry = level.bag->begin();
        level.ahead = ReadAhead(*level.bag);
    } else {
        level.child = level.layout->m_children.begin();
        level.behind = level.layout->m_children.end();
    }
}

bool WalkState::GoOn(Level& level) {
    switch (level.content) {
    case Level::Content::Children:
        return NextChild(level);
    case Level::Content::Items:
        return NextItem(level);
    case Level::Content::Profiles:
        return level.hasGivenDefault ? NextProfile(level) : DefaultProfile(level);
    }
    return false;
}

/// The bag of a child, in its shape's place or by name.
PersistentProperties* WalkState::BagOf(PersistentProperties& bag, LayoutNode const& child,
                                       std::size_t index) {
    NodeShape const* const shape = NodeShapeOf(bag);
    if (shape != nullptr && index < shape->Children().size()) {
        NodeShape::Child const& own = shape->Children()[index];
        if (own.IsFoundAs(child)) {
            return LiveBagAt(bag, own.slot);
        }
    }
    return FindBag(bag, child.m_name);
}

bool WalkState::NextChild(Level& level) {
    if (level.child == level.behind) {
        return false;
    }
    std::size_t const index = level.given++;
    LayoutNode const& child = **level.child++;
    m_place.layout = &child;
    m_place.name = child.m_name;
    m_place.index = index;
    if (level.bag != nullptr && child.Parent() == level.layout) {
        m_at.m_pNode = &child;
        m_at.m_pProperties = BagOf(*level.bag, child, index);
        m_at.m_isContainer = child.m_isProfileList || child.m_isList;
        m_at.m_pParentProperties = nullptr;
    } else { // nothing stands here, or the layout is a copy
        ParameterNode above;
        above.m_pNode = level.layout;
        above.m_pProperties = level.bag;
        m_at = above.Get(&child);
    }
    PlaceKind const kind = KindOf(m_at, child, m_twofold);
    StandOn(kind, kind == PlaceKind::Leaf);
    return true;
}

AnyWalk::Row WalkState::PeekRow() {
    if (m_place.goesIn) {
        GoIn();
    }
    Level const* const level = m_levels.empty() ? nullptr : &m_levels.back();
    bool const isRow =
        level != nullptr && level->content == Level::Content::Children && level->bag != nullptr;
    return isRow ? AnyWalk::Row{level->layout, level->bag, level->given, m_levels.size(), BagAfter()}
                 : AnyWalk::Row{};
}

/// What a walk through profiles comes to after the one that it is in; null where that isn't known.
PersistentProperties const* WalkState::BagAfter() const {
    Level const* const around = m_levels.size() > 1 ? &m_levels[m_levels.size() - 2] : nullptr;
    if (around == nullptr || around->content != Level::Content::Profiles ||
        around->entry == around->bag->end()) {
        return nullptr;
    }
    auto const* const next = PropertyCast<PersistentProperties>((*around->entry).property);
    return next != nullptr ? &next->m_value : nullptr;
}

void WalkState::PassTo(std::size_t position) noexcept {
    Level& level = m_levels.back();
    level.child += static_cast<std::ptrdiff_t>(position - level.given);
    level.given = position;
}

bool WalkState::NextItem(Level& level) {
    if (level.given == level.size) {
        return false;
    }
    std::size_t const index = level.given++;
    PersistentProperties& item = level.items->GetProperty(static_cast<std::int32_t>(index));
    if (level.given != level.size) {
        BagAccess::Announce(level.items->GetProperty(static_cast<std::int32_t>(level.given)), BlockBytes);
    }
    StandOnEntry(level, PlaceKind::Item, &item, index, {});
    return true;
}

bool WalkState::DefaultProfile(Level& level) {
    level.hasGivenDefault = true;
    StandOnEntry(level, PlaceKind::DefaultProfile, FindBag(*level.bag, Reserved().defaultProfile), 0, {});
    return true;
}

/// From entry to entry and not by name, so that several of one name cost no look-up each: entries of one name
/// follow each other, and the first of them is what a look-up finds.
bool WalkState::NextProfile(Level& level) {
    for (; level.entry != level.bag->end(); ++level.entry) {
        NamedProperty const entry = *level.entry;
        level.ahead.Step();
        if (level.first.property == nullptr || level.first.name != entry.name) {
            level.first = entry;
        }
        bool const isGivenAlready = level.given != 0 && level.profile == entry.name;
        if (!IsNamedProfile(entry) || (isGivenAlready && m_sameNames == SameNames::FirstOnly)) {
            continue;
        }
        level.profile = entry.name;
        m_place.isRepeated = isGivenAlready;
        ++level.entry;
        PersistentProperties* const bag = m_sameNames == SameNames::Each
                                              ? &PropertyCast<PersistentProperties>(entry.property)->m_value
                                              : LiveBag(level.first.property);
        StandOnEntry(level, PlaceKind::Profile, bag, level.given++, entry.name);
        return true;
    }
    return false;
}

// The path

std::wstring_view WalkState::Path() {
    m_path.resize(m_named == 0 ? 0 : m_levels[m_named - 1].pathEnd);
    for (; m_named < m_place.depth; ++m_named) {
        Level& level = m_levels[m_named];
        AppendStep(level, m_path);
        level.pathEnd = m_path.size();
    }
    return m_path;
}

AnyWalk::AnyWalk(ParameterView const& top, SameNames sameNames, TwofoldContainers twofold)
    : m_place{top}, m_state(std::make_unique<WalkState>(m_place, sameNames, twofold)) {}

AnyWalk::~AnyWalk() = default;

bool AnyWalk::Next() { return m_state->Next(); }

AnyWalk::Row AnyWalk::PeekRow() { return m_state->PeekRow(); }

void AnyWalk::PassTo(std::size_t position) noexcept { m_state->PassTo(position); }

std::wstring_view AnyWalk::Path() const { return m_state->Path(); }

} // namespace Zantrel
