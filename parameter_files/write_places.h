// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_value_sax.h"

#include <zantrel/database/walk.h>
#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/sax_writer.h>

#include <cstddef>

// Both parameter files are written by one loop over a walk. Each place but the top is an element, so the
// elements that are open are always as many as the steps to the place last written, and an element is closed
// when the walk comes to a place that isn't within. No depth of a layout takes stack; beyond what XML is
// written to, the writer fails and the loop ends.

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

    using AnyWalk::PassPlainLeaf;
    using AnyWalk::PeekPlainLeaf;
};

/// Writes the leaves without attributes that come next, in one go each.
template <class Format>
void WritePlainLeaves(FileWalk& walk, Format& format, OpenElements& elements, KelSAX::ISAXWriter& writer) {
    for (auto leaf = walk.PeekPlainLeaf(); leaf.layout != nullptr; leaf = walk.PeekPlainLeaf()) {
        KelSAX::PreparedTag const* const tag = format.TagOfPlainLeaf(*leaf.layout);
        if (tag == nullptr || writer.HasFailed()) {
            return;
        }
        elements.CloseTo(leaf.depth - 1);
        WritePlainElement(*tag, leaf.layout->m_type, *leaf.value, writer);
        walk.PassPlainLeaf();
    }
}

/// Writes what stands at and below `top` as content of the element that is open. The format has these
/// operations: IsLeftOut(walk), which is asked for each place in order, and passes over all below it, too;
/// TagOf(walk), the tag of a place's element, which the top doesn't have; MayHaveAttributes(walk), of leaves
/// only; and WriteAttributes(walk, writer), what the element of this very place has beyond its tag. Beside
/// these TagOfPlainLeaf(node), of a leaf that holds its value alone: null where the others are to be asked.
template <class Format>
void WritePlaces(ParameterView const& top, Format& format, KelSAX::ISAXWriter& writer) {
    OpenElements elements(writer);
    for (FileWalk walk(top); !writer.HasFailed() && walk.Next();) {
        if (format.IsLeftOut(walk)) {
            walk.SkipContent();
            continue;
        }
        if (walk.Depth() != 0) {
            elements.CloseTo(walk.Depth() - 1);
            if (walk.IsLeaf() && !format.MayHaveAttributes(walk)) {
                WriteLeafElement(format.TagOf(walk), walk.Node(), writer);
                WritePlainLeaves(walk, format, elements, writer);
                continue;
            }
            elements.Open(format.TagOf(walk));
        }
        format.WriteAttributes(walk, writer);
        if (walk.IsLeaf()) {
            WriteLeafValue(walk.Node(), writer);
        }
        WritePlainLeaves(walk, format, elements, writer);
    }
}

} // namespace Zantrel
