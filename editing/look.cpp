// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/look.h>

#include "editing/compared_value.h"
#include "editing/findings.h"
#include "editing/place_kind.h"
#include "editing/scope.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

// Whether a place can be seen and changed is decided step by step along its way, and each step adds its own
// reasons. LookOf goes the whole way for one place; LookWalk keeps what the steps around have said and adds
// the last one.

namespace Zantrel::Editing {

/// Adds to a look what one step of a place's way has against it. The reasons for a place are those for the
/// place around it, and then its own; so a walk keeps them as a stack.
class StepLook {
public:
    static void AddTo(Look& look, PlaceView const& place, std::size_t depth) {
        StepLook(look, place, depth).Add();
    }
    /// As a sentence names the place that stands so deep.
    static std::wstring Subject(PlaceView const& place, std::size_t depth);

private:
    using Kind = LookReason::Kind;
    StepLook(Look& look, PlaceView const& place, std::size_t depth)
        : m_look(look), m_place(place), m_depth(depth), m_layout(place.m_steps[depth].layout) {}

    /// Conditions of one node on one source.
    struct Alternatives {
        std::vector<LayoutNodeSource const*>::const_iterator first, last;
        std::wstring actual;
    };

    void Add();
    LookReason& AddReason(Kind kind, bool isAboutVisibility);
    void AddConditions(std::vector<LayoutNodeSource> const& conditions, bool isAboutVisibility);

    Look& m_look;
    PlaceView const& m_place;
    std::size_t m_depth;
    LayoutNode const* m_layout;
};

namespace {

std::wstring NameOf(LayoutNode const& node) {
    return Quoted(node.m_displayName.empty() ? node.m_name : node.m_displayName);
}

std::wstring Say(LookReason const& reason, std::wstring const& subject) {
    using Kind = LookReason::Kind;
    bool const isAboutVisibility = reason.isAboutVisibility;
    if (reason.kind == Kind::Layout) {
        return isAboutVisibility ? L"The layout doesn't show " + subject + L'.'
                                 : L"The layout makes " + subject + L" read-only.";
    }
    if (reason.kind == Kind::Flag) {
        return subject + (isAboutVisibility ? L" is hidden." : L" is read-only.");
    }
    // A condition may have hundreds of alternatives, which no sentence should list.
    constexpr std::size_t most = 5;
    std::wstring sentence;
    sentence.reserve(160);
    sentence.append(subject)
        .append(isAboutVisibility ? L" is shown only where " : L" can be changed only where ")
        .append(NameOf(*reason.source));
    for (std::size_t i = 0; i < std::min(reason.wanted.size(), most); ++i) {
        sentence.append(i == 0 ? L" is " : L" or ").append(Quoted(reason.wanted[i]));
    }
    sentence.append(reason.wanted.size() > most ? L" or one of others; it is " : L"; it is ");
    return sentence.append(Quoted(reason.actual)).append(L".");
}

} // namespace

std::wstring StepLook::Subject(PlaceView const& place, std::size_t depth) {
    auto const& step = place.m_steps[depth];
    std::wstring const name = step.layout != nullptr ? NameOf(*step.layout) : std::wstring();
    switch (step.kind) {
    case PlaceKind::Item:
        return L"Item " + std::to_wstring(step.index) + L" of " + name;
    case PlaceKind::Profile:
        return L"Profile " + Quoted(step.profile) + L" of " + name;
    case PlaceKind::DefaultProfile:
        return L"The default profile of " + name;
    default:
        return name;
    }
}

// An entry of a container shares the container's layout node, which has counted there.
void StepLook::Add() {
    auto const& step = m_place.m_steps[m_depth];
    bool const isOfLayout = m_layout != nullptr && !IsEntry(step.kind);
    if (isOfLayout && !m_layout->m_visible) {
        AddReason(Kind::Layout, true);
    }
    if (isOfLayout && m_layout->m_readOnly) {
        AddReason(Kind::Layout, false);
    }
    if (step.cursor.GetHidden()) {
        AddReason(Kind::Flag, true);
    }
    if (step.cursor.GetReadOnly()) {
        AddReason(Kind::Flag, false);
    }
    if (isOfLayout) {
        AddConditions(m_layout->m_visibilitySources, true);
        AddConditions(m_layout->m_editabilitySources, false);
    }
}

LookReason& StepLook::AddReason(Kind kind, bool isAboutVisibility) {
    (isAboutVisibility ? m_look.isVisible : m_look.isEditable) = false;
    LookReason& reason = m_look.reasons.emplace_back();
    reason.kind = kind;
    reason.isAboutVisibility = isAboutVisibility;
    reason.depth = m_depth;
    reason.node = m_layout;
    return reason;
}

// Conditions are sorted by their source, whose value is formatted once: no worse than sorting, in whatever
// order they stand. Those that don't hold are told in the order of the layout.
void StepLook::AddConditions(std::vector<LayoutNodeSource> const& conditions, bool isAboutVisibility) {
    std::vector<LayoutNodeSource const*> sorted;
    sorted.reserve(conditions.size());
    for (LayoutNodeSource const& condition : conditions) {
        sorted.push_back(&condition);
    }
    std::sort(sorted.begin(), sorted.end(), [](auto const* left, auto const* right) {
        return left->m_source != right->m_source ? std::less<>()(left->m_source, right->m_source)
                                                 : left < right;
    });
    std::vector<Alternatives> unmet;
    for (auto first = sorted.begin(), last = first; first != sorted.end(); first = last) {
        LayoutNode const* const source = (*first)->m_source;
        last =
            std::find_if(first, sorted.end(), [&](auto const* other) { return other->m_source != source; });
        auto text = source != nullptr ? FormattedText(Scope::Find(m_place, m_depth, *source)) : std::nullopt;
        if (text && std::none_of(first, last, [&](auto const* one) { return one->m_value == *text; })) {
            unmet.push_back({first, last, std::move(*text)});
        }
    }
    // All are elements of one vector, whose order is that of their addresses.
    std::sort(unmet.begin(), unmet.end(),
              [](Alternatives const& left, Alternatives const& right) { return *left.first < *right.first; });
    for (Alternatives& alternatives : unmet) {
        LookReason& reason = AddReason(Kind::Condition, isAboutVisibility);
        reason.source = (*alternatives.first)->m_source;
        reason.actual = std::move(alternatives.actual);
        std::transform(alternatives.first, alternatives.last, std::back_inserter(reason.wanted),
                       [](auto const* one) { return one->m_value; });
    }
}

std::wstring SentenceOf(LookReason const& reason, PlaceView const& place) {
    return Say(reason, StepLook::Subject(place, reason.depth));
}

Look LookOf(PlaceView const& place) {
    Look look;
    for (std::size_t depth = 0; depth <= place.GetDepth(); ++depth) {
        StepLook::AddTo(look, place, depth);
    }
    return look;
}

LookWalk::LookWalk(ParameterDatabase const& database) : LookWalk(PlaceView(database)) {}

LookWalk::LookWalk(PlaceView top) : m_walk(std::move(top)) {}

bool LookWalk::Next() {
    bool const isFirst = m_outer.empty();
    if (!m_walk.Next()) {
        return false;
    }
    PlaceView const& place = GetPlace();
    // All that is around the top is looked at with it; afterwards each place adds itself.
    for (std::size_t depth = isFirst ? 0 : place.GetDepth(); depth <= place.GetDepth(); ++depth) {
        // The reasons of what is around are the first ones of the place left last, so that they are cut to
        // and never copied.
        m_outer.resize(depth + 1);
        Outer const around = depth == 0 ? Outer() : m_outer[depth - 1];
        m_look.reasons.resize(around.reasons);
        m_look.isVisible = around.isVisible;
        m_look.isEditable = around.isEditable;
        StepLook::AddTo(m_look, place, depth);
        m_outer[depth] = {m_look.reasons.size(), m_look.isVisible, m_look.isEditable};
    }
    return true;
}

} // namespace Zantrel::Editing
