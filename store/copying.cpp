// SPDX-License-Identifier: Apache-2.0
#include "store/copying.h"

#include "store/bag_inside.h"
#include "store/visit_property.h"

#include <algorithm>
#include <variant>
#include <vector>

// A copy is made bag by bag, with a list of what is still to be copied in place of recursion, so that the
// depth takes no stack. A bag is built in one allocation with its plain values and with the value of each
// inner bag that holds "Value" alone, as every leaf of a database does.

namespace Zantrel {

namespace {

using Sequence = BagInside::Sequence;

template <class Value> constexpr bool IsBag = std::is_base_of_v<PersistentProperties, Value>;
template <class Value> constexpr bool IsPlain = !IsBag<Value> && !std::is_same_v<Value, Sequence>;

struct BagPair {
    PersistentProperties* target;
    PersistentProperties const* source;
};

struct SequencePair {
    Sequence* target;
    Sequence const* source;
};

/// What a copy of a plain value takes of its bag's room. Anything else is no leaf's value.
std::size_t RoomForPlain(IPersistentProperty const* property) {
    std::size_t bytes = 0;
    if (property != nullptr) {
        VisitProperty(*property, [&bytes]<class Class>(Class const& typed) {
            bytes = IsPlain<std::decay_t<decltype(typed.m_value)>> ? RecordRoom::SizeOf<Class>() : 0;
        });
    }
    return bytes;
}

std::size_t RoomFor(IPersistentProperty const& property) {
    std::size_t bytes = 0;
    VisitProperty(property, [&bytes]<class Class>(Class const& typed) {
        bytes = RecordRoom::SizeOf<Class>();
        if constexpr (IsBag<std::decay_t<decltype(typed.m_value)>>) {
            bytes += RoomForPlain(BagInside::Reader(typed.m_value).Sole());
        }
    });
    return bytes;
}

class Copying {
public:
    explicit Copying(NameCopier& names) : m_names(names) {}

    void Add(BagPair pair) {
        if (!pair.source->IsEmpty()) {
            m_open.push_back(pair);
        }
    }
    void Add(SequencePair pair) { m_open.push_back(pair); }

    void Run() {
        while (!m_open.empty()) {
            // By value: a copy adds to the list, which may then move.
            auto const next = m_open.back();
            std::visit([this](auto pair) { Copy(pair); }, next);
        }
    }

private:
    void Copy(BagPair pair) {
        m_open.pop_back();
        std::size_t const mark = m_open.size();
        if (ShapedBlock const* const shaped =
                m_names.KeepsBorrowed() ? BagInside::Shaped(*pair.source) : nullptr) {
            CopyShaped(*pair.target, *shaped);
        } else {
            CopyTable(pair);
        }
        std::reverse(m_open.begin() + static_cast<std::ptrdiff_t>(mark), m_open.end()); // first things first
    }

    /// Place by place: no name is looked at and nothing is searched.
    void CopyShaped(PersistentProperties& target, ShapedBlock const& source) {
        ShapedBlock& made = *ShapedBlock::MakeEmpty(*source.shape);
        BagInside::SetWord(target, WordOf(ShapedForm{&made}));
        for (std::size_t slot = 0; slot < source.made; ++slot) {
            if (source.shape->At(slot).flagBit != 0) {
                CopyFlag(made, source, slot);
                continue;
            }
            ShapedBlock::Bag const& bag = source.BagAt(slot);
            IPersistentProperty const* const value = source.PlainValueAt(slot);
            ShapedBlock::Bag& copy = made.AddCopy(bag, value);
            if (value == nullptr) {
                Add(BagPair{&copy.m_value, &bag.m_value});
            }
        }
    }

    static void CopyFlag(ShapedBlock& target, ShapedBlock const& source, std::size_t slot) {
        target.PassFlag();
        if (source.Has(slot)) {
            target.SetFlag(slot, source.FlagAt(slot).m_value);
            target.FlagAt(slot).SetDeleted(source.FlagAt(slot).m_deleted);
        }
    }

    /// Two passes: the first adds up the room, so that the second one allocates nothing for plain
    /// values. A bag in single form keeps it, which takes less than a block.
    void CopyTable(BagPair pair) {
        EntryReader const source = BagInside::Reader(*pair.source);
        std::size_t bytes = 0;
        for (EntryPlace at = source.First(); at != nullptr && source.Sole() == nullptr;
             at = source.Next(at)) {
            bytes += RoomFor(*source.PropertyAt(at));
        }
        EntryTable target = BagInside::Table(*pair.target);
        RecordRoom room = bytes != 0 ? target.Reserve(source.Size(), bytes) : RecordRoom();
        for (EntryPlace at = source.First(); at != nullptr; at = source.Next(at)) {
            CopyEntry(target, m_names(source.NameAt(at)), *source.PropertyAt(at), room);
        }
    }

    /// One bag at a time, each with all below it.
    void Copy(SequencePair pair) {
        // The target tells how far the copy has come; so the pair may stay on the list as it is.
        auto const index = static_cast<std::size_t>(pair.target->GetNumProperties());
        if (index == pair.source->GetNumProperties()) {
            m_open.pop_back();
        } else {
            Add(BagPair{&pair.target->AddProperty(), &BagInside::At(*pair.source, index)});
        }
    }

    void CopyEntry(EntryTable target, EntryName name, IPersistentProperty const& property, RecordRoom& room) {
        bool const isKnown = VisitProperty(property, [&]<class Class>(Class const& typed) {
            using Value = std::decay_t<decltype(typed.m_value)>;
            if constexpr (IsPlain<Value>) {
                target.Emplace<Class>(std::move(name), room, typed.m_value).SetDeleted(typed.m_deleted);
            } else {
                auto& copy = target.Emplace<Class>(std::move(name), room);
                copy.SetDeleted(typed.m_deleted);
                CopyContent(copy.m_value, typed.m_value, room);
            }
        });
        if (!isKnown) {
            // A class of a host's own, whose size and content only its Clone knows.
            target.Insert(std::move(name), PropertyHandle::Heap(property.Clone()));
        }
    }

    template <class Value> void CopyContent(Value& target, Value const& source, RecordRoom& room) {
        if constexpr (IsBag<Value>) {
            CopyHead(target, source);
            IPersistentProperty const* const sole = BagInside::Reader(source).Sole();
            if (RoomForPlain(sole) != 0) {
                CopyEntry(BagInside::Table(target), EntryName::Borrow(Reserved().value), *sole, room);
            } else {
                Add(BagPair{&target, &source});
            }
        } else {
            Add(SequencePair{&target, &source});
        }
    }

    NameCopier& m_names;
    std::vector<std::variant<BagPair, SequencePair>> m_open;
};

} // namespace

void CopyEntries(PersistentProperties& target, PersistentProperties const& source, NameCopier& names) {
    Copying copying(names);
    copying.Add(BagPair{&target, &source});
    copying.Run();
}

void TakeOver(KelAM::ExternalProperties& target, KelAM::ExternalProperties& made) noexcept {
    std::swap(target.m_objectKind, made.m_objectKind);
    std::swap(target.m_id, made.m_id);
    BagInside::Swap(target, made);
}

void Assign(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source, NameCopier& names) {
    if (&target != &source) {
        KelAM::ExternalProperties copy;
        CopyHead(copy, source);
        CopyEntries(copy, source, names);
        TakeOver(target, copy); // what stood there ends last: the source may lie within it
    }
}

void CopyBags(Sequence& target, Sequence const& source, NameCopier& names) {
    Copying copying(names);
    copying.Add(SequencePair{&target, &source});
    copying.Run();
}

} // namespace Zantrel
