// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/generated_database.h"

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/sub_properties.h>

#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

namespace TestSupport {

/// Fills the stores of tickets with properties of every type at several depths, under names and with texts
/// that are hard to carry. What comes back from a file in another form: deleted properties are gone, the kind
/// of the defaults and kinds beyond 1 to 4 are 0, components are named by their GUID in braces and upper case
/// and so ordered, and a pair of surrogates may be one character. From then on all of it stays.
class TicketGenerator {
public:
    explicit TicketGenerator(unsigned seed) : m_random(seed) {}

    void FillStores(KelAM::DatabaseExternalProperties& stores, std::size_t count,
                    std::size_t propertiesEach) {
        for (std::size_t i = 0; i < count; ++i) {
            KelAM::ExternalPropertyID const id(Identifier(i));
            FillStore(*stores.GetProperties(id, true), i, propertiesEach);
        }
    }

    /// Six stores that follow each other have the kinds 0 to 5.
    void FillStore(KelAM::ExternalProperties& store, std::size_t number, std::size_t properties) {
        store.m_objectKind = static_cast<std::int32_t>(number % 6);
        FillBag(store, properties, true);
    }

private:
    using Sequence = IndexedProperties<PersistentProperties>;

    /// A GUID in one of its spellings, or a text that shares nothing with one but length and dashes.
    std::wstring GuidShape() {
        static wchar_t const* const characters[] = {L"0123456789abcdef", L"0123456789ABCDEF",
                                                    L"0123456789aBcDeF", L"-{ };<&>\"'\n\t\r\x00E4\x65E5z"};
        wchar_t const* const among = characters[m_random.Below(std::size(characters))];
        std::wstring text(36, L'-');
        for (std::size_t i = 0; i < text.size(); ++i) {
            text[i] = i == 8 || i == 13 || i == 18 || i == 23 ? L'-' : among[m_random.Below(16)];
        }
        return m_random.Chance(2) ? L'{' + text + L'}' : text;
    }

    std::wstring Identifier(std::size_t number) {
        static wchar_t const* const awkward[] = {L"", L"a;b<&>", L" \t\n", L"\U0001F600", L"{}", L"-"};
        return number % 2 == 0 || number / 2 >= std::size(awkward) ? GuidShape() : awkward[number / 2];
    }

    /// Now and then the one before, so that a name has several entries.
    std::wstring Name() {
        if (!m_random.Chance(4)) {
            m_name = m_random.Chance(6) ? GuidShape() : m_random.Text();
        }
        return m_name;
    }

    template <class T> T& Add(PersistentProperties& bag, std::wstring const& name, T const& value = T()) {
        auto property = std::make_unique<PersistentProperty<T>>(value);
        T& added = property->m_value;
        property->SetDeleted(m_random.Chance(8));
        bag.AddProperty(name, property.release());
        return added;
    }

    /// With `count` properties in all depths. Those of a store begin with one of each kind.
    void FillBag(PersistentProperties& bag, std::size_t count, bool isStore = false) {
        for (unsigned next = 0; count != 0; ++next) {
            unsigned const kind = isStore && next < 9 ? next : m_random.Below(9);
            std::size_t const inside = kind < 5 ? 0 : Share((count - 1) / 2);
            AddProperty(bag, kind, inside);
            count -= 1 + inside;
        }
    }

    void FillSequence(Sequence& sequence, std::size_t count) {
        for (unsigned bags = m_random.Below(4) + (count != 0 ? 1 : 0); bags != 0; --bags) {
            std::size_t const inside = bags == 1 ? count : Share(count);
            FillBag(sequence.AddProperty(), inside);
            count -= inside;
        }
    }

    std::size_t Share(std::size_t of) { return m_random.Below(static_cast<unsigned>(of + 1)); }

    void AddProperty(PersistentProperties& bag, unsigned kind, std::size_t inside) {
        std::wstring const name = Name();
        switch (kind) {
        case 0:
            return AddValue<std::int32_t>(bag, name);
        case 1:
            return AddValue<double>(bag, name);
        case 2:
            return AddValue<bool>(bag, name);
        case 3:
            return AddValue<std::wstring>(bag, name);
        case 4:
            return AddValue<KelAM::FileContent>(bag, name);
        case 5:
            return FillBag(Add<PersistentProperties>(bag, name), inside);
        case 6:
            return FillSequence(Add<Sequence>(bag, name), inside);
        case 7: // never a component
            return FillBag(Add<KelAM::SubProperties>(bag, L"Set" + name), inside);
        default: // a component where it stands in a store; two of one name would come back as one
            return FillBag(Add<KelAM::SubProperties>(bag, GuidShape()), inside);
        }
    }

    /// No NaN, which is unequal to itself.
    template <class T> void AddValue(PersistentProperties& bag, std::wstring const& name) {
        T const value = m_random.Value(T());
        Add(bag, name, value == value ? value : T());
    }

    Generator m_random;
    std::wstring m_name;
};

/// Adds `instances` part instances, `instances` objects, and to each of them and to the defaults
/// `propertiesEach` properties, nested ones included.
inline void FillTicket(BuildTicket& ticket, unsigned seed, std::size_t instances,
                       std::size_t propertiesEach) {
    TicketGenerator generator(seed);
    generator.FillStore(ticket.GetDefaults(), seed, propertiesEach);
    generator.FillStores(ticket.GetPartOverrides(), instances, propertiesEach);
    generator.FillStores(ticket.GetObjectProperties(), instances, propertiesEach);
}

} // namespace TestSupport
