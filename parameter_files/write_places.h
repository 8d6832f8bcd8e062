// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/plain_rows.h"
#include "parameter_files/repeated_profiles.h"

#include <zantrel/database/walk.h>
#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/sax_writer.h>

#include <array>
#include <cstddef>
#include <cstdint>

// Both parameter files are written by one loop over a walk. Each place but the top is an element, so the
// elements that are open are always as many as the steps to the place last written, and an element is closed
// when the walk comes to a place that isn't within. No depth of a layout takes stack; beyond what XML is
// written to, the writer fails and the loop ends.
//
// Nearly everything is plain, though: a group or value that stands where formatting put it. This needs no
// place and no question, so PlainWriter takes it straight from the bags' blocks whenever the walk is about to
// go through a row of children, and gives back to the walk where it meets something else.

namespace Zantrel {

/// The elements that are open between the top of a walk and the place where it stands. Ends with all of them
/// closed.
class OpenElements {
public:
    explicit OpenElements(KelSAX::ISAXWriter& writer) : m_writer(writer) {}
    OpenElements(OpenElements const&) = delete;
    OpenElements& operator=(OpenElements const&) = delete;
    ~OpenElements() { CloseTo(0); }

    /// Opens one more, within those that are open. Its attributes come next.
    void Open(KelSAX::PreparedTag const& tag) {
        m_writer.OpenPrepared(tag);
        ++m_count;
    }
    /// Closes the innermost ones until `count` are left; nothing where there are no more than that.
    void CloseTo(std::size_t count) noexcept {
        for (; m_count > count; --m_count) {
            m_writer.CloseElement();
        }
    }

private:
    KelSAX::ISAXWriter& m_writer;
    std::size_t m_count = 0;
};

/// The places that a file has, in its order: of several profiles of one name the first one's content each
/// time, as look-ups by name find it. It gives cursors that could write, to look at bags without a detour,
/// and writes nothing.
class FileWalk final : public AnyWalk {
public:
    explicit FileWalk(ParameterView const& top)
        : AnyWalk(top, SameNames::FirstAgain, TwofoldContainers::AreProfileLists) {}

    /// The cursor on the place; on nothing where the layout has a node and the database no content. Good
    /// until Next.
    ParameterNode const& Node() const noexcept { return AsNode(); }

    using AnyWalk::IsRepeated;
    using AnyWalk::PassTo;
    using AnyWalk::PeekRow;
    using AnyWalk::Row;
};

/// Writes what is plain, straight from the blocks of bags.
///
/// It stands in a stack of groups of its own, the outermost being the one whose row the walk is in, and never
/// leaves that one: so whatever the format keeps of the places around stays true, and nothing that it is
/// asked about has been passed over. What is open is always counted in `elements`.
template <class Format> class PlainWriter {
public:
    PlainWriter(Format& format, OpenElements& elements, KelSAX::ISAXWriter& writer)
        : m_format(format), m_elements(elements), m_writer(writer) {}

    /// Writes on from where the walk stands, up to the end of its row or to what isn't plain, and leaves the
    /// walk before that.
    void WriteOn(FileWalk& walk) {
        FileWalk::Row const from = walk.PeekRow();
        PlainRow* const row = from.layout != nullptr ? RowOf(from) : nullptr;
        if (row == nullptr) {
            return;
        }
        m_elements.CloseTo(from.depth - 1);
        if (from.bag != m_announced) {
            AnnounceBelow(*row, *from.bag);
        }
        if (from.after != nullptr) {
            AnnounceBelow(*row, *from.after);
            m_announced = from.after;
        }
        Enter(*row, *from.bag, from.next);
        bool isGoingOn = true;
        while (isGoingOn) {
            Group& group = m_groups[m_depth - 1];
            bool const isAtEnd = WriteValues(group);
            if (isAtEnd && m_depth != 1) {
                --m_depth;
                m_elements.CloseTo(from.depth + m_depth - 2);
            } else {
                isGoingOn = !isAtEnd && GoIn(group);
            }
        }
        TakeAlong(walk);
    }

private:
    struct Group {
        PlainRow* row;
        ShapedBlock const* block;
        PlainRow::Child* next;
        PlainRow::Child* end;

        std::size_t Position() const noexcept {
            return static_cast<std::size_t>(next - row->children.data());
        }
    };
    /// Groups in each other beyond these are left to the walk.
    static constexpr std::size_t MostGroups = 32;

    /// Null where the bag hasn't the entries that formatting gives a bag of this group.
    PlainRow* RowOf(FileWalk::Row const& from) {
        NodeShape const* const shape = NodeShapeOf(*from.bag);
        return shape != nullptr && &shape->Node() == from.layout ? &m_rows.Of(*shape, m_format) : nullptr;
    }

    /// What hangs below a bag lies elsewhere and is fetched while what comes before it is written. The bag
    /// itself has been announced.
    static void AnnounceBelow(PlainRow const& row, PersistentProperties const& bag) {
        ShapedBlock const* const block = BagAccess::BlockOf(bag);
        if (block != nullptr && block->shape == row.shape) {
            for (PlainRow::Body const& body : row.bodies) {
                BagAccess::Announce(BagAccess::BagIn(*block, body.place).m_value, body.bytes);
            }
        }
    }

    /// Whoever came to the bag has announced what is below.
    void Enter(PlainRow& row, PersistentProperties const& bag, std::size_t next) {
        ShapedBlock const* const block = BagAccess::BlockOf(bag);
        for (PlainRow::Outer const& outer : row.outers) {
            AnnounceBelow(*outer.row, BagAccess::BagIn(*block, outer.place).m_value);
        }
        for (std::uint32_t const place : row.texts) {
            BagAccess::AnnounceText(BagAccess::BagIn(*block, place));
        }
        PlainRow::Child* const children = row.children.data();
        m_groups[m_depth++] = {&row, block, children + next, children + row.children.size()};
    }

    /// The values that come next, up to a group or to what isn't plain. Whether that were all.
    bool WriteValues(Group& group) {
        PlainRow::Child* child = group.next;
        for (; child != group.end && child->write != nullptr; ++child) {
            auto const& bag = BagAccess::BagIn(*group.block, child->place);
            IPersistentProperty const* const value = BagAccess::PlainValueOf(bag);
            if (value == nullptr || bag.m_deleted || !child->write(child->tag, *value, m_writer)) {
                break;
            }
        }
        group.next = child;
        return child == group.end;
    }

    /// Opens the group that comes next; false where it isn't a plain one.
    bool GoIn(Group& group) {
        PlainRow::Child& child = *group.next;
        if (child.body == nullptr || m_depth == MostGroups || m_writer.HasFailed()) {
            return false;
        }
        auto const& bag = BagAccess::BagIn(*group.block, child.place);
        if (bag.m_deleted || NodeShapeOf(bag.m_value) != child.body ||
            !BagAccess::HoldsBagsOnly(bag.m_value)) {
            return false;
        }
        if (child.row == nullptr) {
            child.row = &m_rows.Of(*child.body, m_format);
            if (!child.row->bodies.empty()) {
                group.row->outers.push_back({child.place, child.row});
            }
        }
        m_elements.Open(child.tag);
        ++group.next;
        Enter(*child.row, bag.m_value, 0);
        return true;
    }

    /// Lets the walk go into the groups that are open, and pass over what was written of each.
    void TakeAlong(FileWalk& walk) {
        for (std::size_t outer = 0; outer + 1 < m_depth; ++outer) {
            walk.PassTo(m_groups[outer].Position() - 1);
            walk.Next();
            walk.PeekRow(); // goes in
        }
        walk.PassTo(m_groups[m_depth - 1].Position());
        m_depth = 0;
    }

    Format& m_format;
    OpenElements& m_elements;
    KelSAX::ISAXWriter& m_writer;
    PlainRows m_rows;
    PersistentProperties const* m_announced = nullptr; ///< whose groups were
    std::array<Group, MostGroups> m_groups;
    std::size_t m_depth = 0;
};

/// Writes what stands at and below `top` as content of the element that is open. The format has these
/// operations: IsLeftOut(walk), which is asked for each place in order, and passes over all below it, too;
/// TagOf(walk), the tag of a place's element, which the top doesn't have; MayHaveAttributes(walk), of leaves
/// only; and WriteAttributes(walk, writer), what the element of this very place has beyond its tag. Beside
/// these, of a plain child, IsPlain(node): false where the others are to be asked; and MakeTag(node). Gives
/// what profiles were written again.
template <class Format>
RepeatedProfiles WritePlaces(ParameterView const& top, Format& format, KelSAX::ISAXWriter& writer) {
    RepeatedProfiles repeated;
    OpenElements elements(writer);
    PlainWriter plain(format, elements, writer);
    for (FileWalk walk(top); !writer.HasFailed() && walk.Next();) {
        if (format.IsLeftOut(walk)) {
            walk.SkipContent();
            continue;
        }
        if (walk.Depth() != 0) {
            elements.CloseTo(walk.Depth() - 1);
            if (walk.IsLeaf() && !format.MayHaveAttributes(walk)) {
                WriteLeafElement(format.TagOf(walk), walk.Node(), writer);
                plain.WriteOn(walk);
                continue;
            }
            elements.Open(format.TagOf(walk));
        }
        format.WriteAttributes(walk, writer);
        if (walk.Kind() == PlaceKind::Profile && walk.IsRepeated()) {
            repeated.Count(walk.Path());
        }
        if (walk.IsLeaf()) {
            WriteLeafValue(walk.Node(), writer);
        }
        plain.WriteOn(walk);
    }
    return repeated;
}

} // namespace Zantrel
