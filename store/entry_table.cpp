// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/entry_table.h>

#include "store/name_copier.h"
#include "store/record_room.h"
#include "store/reserved_names.h"
#include "store/visit_property.h"

#include <algorithm>
#include <new>

namespace Zantrel {

static_assert(sizeof(void*) == 8, "a table tells its forms by the three low bits of an address");
static_assert(sizeof(Entry) == 2 * sizeof(void*));

/// Sorted entries, and behind them the properties that were placed with them. A block that was outgrown lives
/// on, without its entries, where properties were placed in it or in one before it.
struct EntryBlock {
    static constexpr std::uint32_t CapacityMask = (1u << 30) - 1;

    std::uint32_t size = 0;
    std::uint32_t capacity : 30;
    std::uint32_t holdsProperties : 1;
    std::uint32_t hasOlder : 1; ///< the older block's address stands in front of the entries

    static EntryBlock* Make(std::size_t capacity, std::size_t bytes, EntryBlock* older) {
        std::size_t const front = older != nullptr ? sizeof(EntryBlock*) : 0;
        auto* memory = static_cast<std::byte*>(
            ::operator new(sizeof(EntryBlock) + front + capacity * sizeof(Entry) + bytes));
        auto* block = ::new (memory) EntryBlock;
        block->capacity = static_cast<std::uint32_t>(capacity) & CapacityMask;
        block->holdsProperties = bytes != 0;
        block->hasOlder = older != nullptr;
        if (older != nullptr) {
            ::new (block + 1) EntryBlock*(older);
        }
        return block;
    }

    EntryBlock* Older() const noexcept {
        return hasOlder != 0 ? *reinterpret_cast<EntryBlock* const*>(this + 1) : nullptr;
    }
    Entry* begin() noexcept {
        auto* behind = reinterpret_cast<std::byte*>(this + 1);
        return reinterpret_cast<Entry*>(behind + (hasOlder != 0 ? sizeof(EntryBlock*) : 0));
    }
    Entry* end() noexcept { return begin() + size; }
    std::byte* Room() noexcept { return reinterpret_cast<std::byte*>(begin() + capacity); }

    /// The end of the entries not greater than `name`.
    Entry* UpperBound(std::wstring_view name) noexcept {
        Entry* at = end();
        while (at != begin() && EntryNameLess()(name, (at - 1)->name.View())) {
            --at;
        }
        return at;
    }

    static void FreeChain(EntryBlock* block) noexcept {
        while (block != nullptr) {
            EntryBlock* older = block->Older();
            ::operator delete(block);
            block = older;
        }
    }
};

static_assert(sizeof(EntryBlock) == 8 && alignof(EntryBlock) <= 8);

struct EntryTree {
    EntryTable::Tree entries;
    EntryBlock* older = nullptr; ///< blocks that placed properties still live in

    EntryTree() = default;
    EntryTree(EntryTree const&) = delete;
    EntryTree& operator=(EntryTree const&) = delete;
    ~EntryTree() { EntryBlock::FreeChain(older); }
};

namespace {

/// Ends a property that no table took over.
class PropertyGuard {
public:
    explicit PropertyGuard(PropertyHandle property) : m_property(property) {}
    PropertyGuard(PropertyGuard const&) = delete;
    PropertyGuard& operator=(PropertyGuard const&) = delete;
    ~PropertyGuard() {
        if (m_armed) {
            m_property.End();
        }
    }
    PropertyHandle Release() noexcept {
        m_armed = false;
        return m_property;
    }

private:
    PropertyHandle m_property;
    bool m_armed = true;
};

std::size_t constexpr FirstCapacity = 2;

} // namespace

void PropertyHandle::End() noexcept {
    if (IsPlaced()) {
        Get()->~IPersistentProperty();
    } else {
        delete Get();
    }
}

// Iterator

NamedProperty EntryTable::Iterator::operator*() const {
    if (m_table->IsSingle()) {
        return {Reserved().value, m_table->Single().Get()};
    }
    auto const* entry = static_cast<Entry const*>(m_at);
    return {entry->name.View(), entry->property.Get()};
}

EntryName EntryTable::Iterator::Name() const {
    return m_table->IsSingle() ? EntryName::Borrow(Reserved().value) : static_cast<Entry const*>(m_at)->name;
}

EntryTable::Iterator& EntryTable::Iterator::operator++() {
    if (m_table->IsTree()) {
        ++m_node;
        m_at = m_node != m_table->AsTree()->entries.end() ? &*m_node : nullptr;
    } else if (m_table->IsSingle()) {
        m_at = nullptr;
    } else {
        auto const* next = static_cast<Entry const*>(m_at) + 1;
        m_at = next != m_table->Block()->end() ? next : nullptr;
    }
    return *this;
}

EntryTable::Iterator EntryTable::At(void const* at) const {
    Iterator result;
    result.m_table = this;
    result.m_at = at;
    return result;
}

EntryTable::Iterator EntryTable::At(Tree::const_iterator node) const {
    Iterator result = At(node != AsTree()->entries.end() ? static_cast<void const*>(&*node) : nullptr);
    result.m_node = node;
    return result;
}

// Looking up

std::size_t EntryTable::Size() const noexcept {
    if (m_word == 0) {
        return 0;
    }
    return IsSingle() ? 1 : IsTree() ? AsTree()->entries.size() : Block()->size;
}

EntryTable::Iterator EntryTable::begin() const {
    if (Size() == 0) {
        return end();
    }
    if (IsTree()) {
        return At(AsTree()->entries.begin());
    }
    return At(IsSingle() ? static_cast<void const*>(Single().Get()) : Block()->begin());
}

EntryTable::Iterator EntryTable::Find(std::wstring_view name) const {
    if (m_word == 0) {
        return end();
    }
    if (IsSingle()) {
        return name == Reserved().value ? begin() : end();
    }
    if (IsTree()) {
        auto const node = AsTree()->entries.lower_bound(name);
        return node != AsTree()->entries.end() && node->name.View() == name ? At(node) : end();
    }
    auto const found = std::find_if(Block()->begin(), Block()->end(),
                                    [name](Entry const& entry) { return entry.name.View() == name; });
    return found != Block()->end() ? At(static_cast<void const*>(found)) : end();
}

IPersistentProperty* EntryTable::FindFirst(std::wstring_view name) const {
    Iterator const found = Find(name);
    return found != end() ? (*found).property : nullptr;
}

IPersistentProperty* EntryTable::FindBorrowed(std::wstring const& name) const {
    if (m_word == 0) {
        return nullptr;
    }
    if (IsSingle()) {
        return &name == &Reserved().value || name == Reserved().value ? Single().Get() : nullptr;
    }
    if (!IsTree()) {
        for (Entry *at = Block()->begin(), *end = Block()->end(); at != end; ++at) {
            if (at->name.Borrows(name)) {
                bool const isFirst = at == Block()->begin() || (at - 1)->name.View() != name;
                return isFirst ? at->property.Get() : FindFirst(name);
            }
        }
    }
    return FindFirst(name);
}

// Changing

std::byte* EntryTable::Grow(std::size_t capacity, std::size_t bytes) {
    EntryBlock* old = m_word != 0 && !IsSingle() ? Block() : nullptr;
    bool const mustStay = old != nullptr && (old->holdsProperties != 0 || old->hasOlder != 0);
    EntryBlock* block = EntryBlock::Make(capacity, bytes, mustStay ? old : nullptr);
    if (IsSingle()) {
        ::new (block->begin()) Entry{EntryName::Borrow(Reserved().value), Single()};
        block->size = 1;
    } else if (old != nullptr) {
        std::uninitialized_move(old->begin(), old->end(), block->begin());
        std::destroy(old->begin(), old->end());
        block->size = std::exchange(old->size, 0);
        if (!mustStay) {
            EntryBlock::FreeChain(old);
        }
    }
    m_word = reinterpret_cast<std::uintptr_t>(block);
    return block->Room();
}

RecordRoom EntryTable::Reserve(std::size_t count, std::size_t bytes) {
    std::size_t const needed = Size() + count;
    if (count == 0 || IsTree() || needed > BlockLimit) {
        return {};
    }
    std::byte* room = Grow(needed, bytes);
    return {room, room + bytes};
}

void EntryTable::TurnIntoTree() {
    EntryBlock* block = Block();
    auto tree = std::make_unique<EntryTree>();
    for (Entry const& entry : *block) {
        tree->entries.insert(tree->entries.end(), entry);
    }
    std::destroy(block->begin(), block->end());
    block->size = 0;
    if (block->holdsProperties != 0 || block->hasOlder != 0) {
        tree->older = block;
    } else {
        EntryBlock::FreeChain(block);
    }
    m_word = reinterpret_cast<std::uintptr_t>(tree.release()) | TreeBit;
}

void EntryTable::Insert(EntryName name, PropertyHandle property) {
    PropertyGuard guard(property);
    if (m_word == 0 && name.Borrows(Reserved().value)) {
        m_word = guard.Release().Word() | SingleBit;
        return;
    }
    if (!IsTree()) {
        std::size_t const size = Size();
        if (size == BlockLimit) {
            TurnIntoTree();
        } else if (m_word == 0 || IsSingle() || size == Block()->capacity) {
            Grow(std::clamp(2 * size, FirstCapacity, std::size_t(BlockLimit)), 0);
        }
    }
    if (IsTree()) {
        AsTree()->entries.insert(Entry{std::move(name), property}); // behind its equals
    } else {
        Entry* at = Block()->UpperBound(name.View());
        ::new (Block()->end()) Entry{std::move(name), property};
        ++Block()->size;
        std::rotate(at, Block()->end() - 1, Block()->end());
    }
    guard.Release();
}

bool EntryTable::RemoveFirst(std::wstring_view name) {
    Iterator const found = Find(name);
    if (found == end()) {
        return false;
    }
    if (IsTree()) {
        PropertyHandle property = found.m_node->property;
        AsTree()->entries.erase(found.m_node);
        property.End();
    } else if (IsSingle()) {
        PropertyHandle property = Single();
        m_word = 0;
        property.End();
    } else {
        Entry* at = Block()->begin() + (static_cast<Entry const*>(found.m_at) - Block()->begin());
        PropertyHandle property = at->property;
        std::move(at + 1, Block()->end(), at);
        std::destroy_at(Block()->end() - 1);
        --Block()->size;
        property.End();
    }
    return true;
}

void EntryTable::RemoveWhere(std::function<bool(NamedProperty const&)> const& drops) {
    if (IsTree()) {
        Tree& entries = AsTree()->entries;
        for (auto at = entries.begin(); at != entries.end();) {
            PropertyHandle property = at->property;
            if (drops({at->name.View(), property.Get()})) {
                at = entries.erase(at);
                property.End();
            } else {
                ++at;
            }
        }
    } else if (IsSingle()) {
        if (drops({Reserved().value, Single().Get()})) {
            Clear();
        }
    } else if (m_word != 0) {
        EntryBlock* block = Block();
        for (Entry* at = block->begin(); at != block->end();) {
            PropertyHandle property = at->property;
            if (drops({at->name.View(), property.Get()})) {
                std::move(at + 1, block->end(), at);
                std::destroy_at(block->end() - 1);
                --block->size;
                property.End();
            } else {
                ++at;
            }
        }
    }
}

void EntryTable::Clear() noexcept {
    if (m_word == 0) {
        return;
    }
    if (IsSingle()) {
        Single().End();
    } else if (IsTree()) {
        std::unique_ptr<EntryTree> const tree(AsTree());
        for (Entry const& entry : tree->entries) {
            PropertyHandle(entry.property).End();
        }
    } else {
        for (Entry& entry : *Block()) {
            entry.property.End();
        }
        std::destroy(Block()->begin(), Block()->end());
        EntryBlock::FreeChain(Block());
    }
    m_word = 0;
}

// Copying

namespace {

template <class Class>
constexpr bool IsPlainBag = std::is_same_v<Class, PersistentProperty<PersistentProperties>>;

/// What a copy of this property takes of its bag's room: the property, and for a bag with a value alone, as
/// every leaf of a database is, the value's property too.
std::size_t RoomFor(IPersistentProperty const& property) {
    std::size_t bytes = 0;
    VisitProperty(property, [&bytes]<class Class>(Class const& typed) {
        bytes = RecordRoom::SizeOf<Class>();
        if constexpr (IsPlainBag<Class>) {
            if (auto const* value = typed.m_value._Entries().GetSingle()) {
                bytes += RoomFor(*value);
            }
        }
    });
    return bytes;
}

void CopyEntry(EntryTable& table, EntryName name, IPersistentProperty const& property, RecordRoom& room,
               NameCopier& names) {
    bool const known = VisitProperty(property, [&]<class Class>(Class const& typed) {
        using Value = decltype(typed.m_value);
        if constexpr (std::is_base_of_v<PersistentProperties, Value>) {
            auto& copy = table.Emplace<Class>(std::move(name), room);
            auto const* value = typed.m_value._Entries().GetSingle();
            if (IsPlainBag<Class> && value != nullptr) {
                CopyEntry(copy.m_value._Entries(), EntryName::Borrow(Reserved().value), *value, room, names);
            } else {
                copy.m_value._Entries().CopyFrom(typed.m_value._Entries(), names);
            }
            if constexpr (std::is_same_v<Value, KelAM::ExternalProperties>) {
                copy.m_value.m_objectKind = typed.m_value.m_objectKind;
                copy.m_value.m_id = typed.m_value.m_id;
            }
            copy.SetDeleted(typed.m_deleted);
        } else if constexpr (std::is_same_v<Value, IndexedProperties<PersistentProperties>>) {
            auto& copy = table.Emplace<Class>(std::move(name), room);
            copy.m_value._CopyFrom(typed.m_value, names);
            copy.SetDeleted(typed.m_deleted);
        } else {
            table.Emplace<Class>(std::move(name), room, typed.m_value).SetDeleted(typed.m_deleted);
        }
    });
    if (!known) {
        table.Insert(std::move(name), PropertyHandle::Heap(property.Clone()));
    }
}

} // namespace

void EntryTable::CopyFrom(EntryTable const& source, NameCopier& names) {
    RecordRoom room;
    if (!source.IsSingle()) {
        std::size_t bytes = 0;
        for (NamedProperty const& entry : source) {
            bytes += RoomFor(*entry.property);
        }
        room = Reserve(source.Size(), bytes);
    }
    for (Iterator at = source.begin(); at != source.end(); ++at) {
        CopyEntry(*this, names(at.Name()), *(*at).property, room, names);
    }
}

} // namespace Zantrel
