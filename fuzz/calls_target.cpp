// SPDX-License-Identifier: Apache-2.0
//
// Plays calls of the public interface in any order that its headers allow: whatever they give must be usable,
// and what is copied must be equal. Each call is a few bytes of the input.

#include "fuzz/target.h"

#include <zantrel/zantrel.h>

#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace Fuzz {

namespace {

using namespace Zantrel;
using Bag = PersistentProperties;
using Bags = IndexedProperties<Bag>;

constexpr wchar_t const* Names[] = {L"a",
                                    L"b",
                                    L"GenericParameters",
                                    L"Value",
                                    L"",
                                    L"Default",
                                    L"a_b[0]",
                                    L"\x00E4",
                                    L"Options",
                                    L"{01234567-89AB-CDEF-0123-456789abcdef}"};
constexpr wchar_t const* Texts[] = {L"", L"1", L"2.5", L"True", L"text", L"-1e400", L"\x4E00"};

class Player {
public:
    Player(std::string_view bytes, unsigned share) : m_choices(bytes), m_checksTickets(share % 2 == 0) {}

    void Play() {
        for (unsigned count = m_choices.Below(48); count != 0; --count) {
            BuildLayout();
        }
        for (auto const& layout : m_layouts) {
            layout->AddCategoryNodeIfNeeded();
        }
        using Call = void (Player::*)();
        static constexpr Call calls[] = {&Player::ChangeDatabases, &Player::UseCursor,
                                         &Player::UseCursor,       &Player::ChangeBag,
                                         &Player::ChangeBag,       &Player::ChangeTickets};
        while (!m_choices.HaveEnded() && m_fault.empty()) {
            try {
                (this->*calls[m_choices.Below(std::size(calls))])();
            } catch (ParameterMisuse const&) { // as the headers have it; what it was asked of stays
            } catch (std::out_of_range const&) {
            }
        }
        for (int i = 0; i < 3 && !m_checksTickets; ++i) {
            CheckDatabase(*m_databases[i]);
        }
    }
    std::string const& Fault() const { return m_fault; }

private:
    /// Of nodes, places or properties, beyond which copies of copies aren't made; they'd take all the time.
    static constexpr std::size_t MostItems = 50;

    bool Flag() { return m_choices.Below(2) != 0; }
    wchar_t const* Name() { return Names[m_choices.Below(std::size(Names))]; }
    wchar_t const* Text() { return Texts[m_choices.Below(std::size(Texts))]; }
    template <class Container> auto& AnyOf(Container& among) {
        return among[m_choices.Below(std::size(among))];
    }
    void Check(bool isGood, char const* what) {
        if (!isGood && m_fault.empty()) {
            m_fault = what;
        }
    }

    // --- Layouts: built first and only read from then on. A copy names nodes of its source, which ends
    // later.

    LayoutNode& Walk(LayoutNode& top) {
        LayoutNode* node = &top;
        while (node->Size() != 0 && m_choices.Below(3) != 0) {
            node = &node->At(m_choices.Below(std::min<std::size_t>(node->Size(), 256)));
        }
        return *node;
    }

    void BuildLayout() {
        ParameterLayout& layout = *m_layouts[Flag() ? 1 : 0];
        LayoutNode &node = Walk(layout), &other = Walk(*m_layouts[0]);
        switch (m_choices.Below(12)) {
        case 0:
            ++m_nodes < MostItems ? void(node.AddNode(other)) : void();
            return CountNodes();
        case 1:
            return void(other.AppendNode(&Walk(*m_layouts[0])));
        case 2:
            return node.MoveNodeTo(node.Back(), m_choices.Below(4));
        case 3:
            return void(node.SetList(Flag(), Name(), L""));
        case 4:
            return void(Flag() ? node.SetProfile(Flag(), Name()) : node.SetCategoryList(Flag(), Name()));
        case 5:
            return void(node.SetMultiplicity(++m_lists < 4 ? m_choices.Below(4) : 0));
        case 6:
            return void(node.AddVisibilitySource<std::wstring>(&other, Text())->SetProfileNode(&other));
        case 7:
            return void(
                node.SetTypeFromProfiles(&other)->SetProfileName(other.m_name)->AddOption(Text(), L""));
        case 8:
            return UseLooseNodes();
        default:
            auto const type = static_cast<eTypeLayoutNode>(m_choices.Below(11));
            return void(node.AddNode(Name(), type, Text()));
        }
    }

    void CountNodes() {
        std::vector<LayoutNode const*> open(m_layouts[0]->m_children.begin(), m_layouts[0]->m_children.end());
        open.insert(open.end(), m_layouts[1]->m_children.begin(), m_layouts[1]->m_children.end());
        for (m_nodes = 0; !open.empty(); ++m_nodes) {
            LayoutNode const* const node = open.back();
            open.pop_back();
            open.insert(open.end(), node->m_children.begin(), node->m_children.end());
        }
    }

    /// Nodes that nothing else names, so that they may end at any time.
    void UseLooseNodes() {
        LayoutNode &node = Walk(m_loose), &below = Walk(node);
        switch (m_choices.Below(6)) {
        case 0:
            return node.m_children.Clear();
        case 1:
            return void(node.m_children = below.m_children);
        case 2:
            return void(&node != &m_loose ? node = below : node);
        case 3:
            return &node != &m_loose ? delete &node : void();
        case 4:
            return void(m_loose.AppendNode(&below));
        default:
            node.AddNode(Name())->AddNode(Name(), Int, 1);
            Check(node.Back()->GetOwner() == &node, "an owner");
        }
    }

    // --- Databases and cursors

    bool IsSmall(ParameterDatabase& database) {
        std::size_t places = 0;
        for (Zantrel::Walk walk(database.GetProfileEditor()); places < MostItems && walk.Next();) {
            ++places;
        }
        return places < MostItems;
    }

    void ChangeDatabases() {
        m_held = ParameterNode();
        std::unique_ptr<ParameterDatabase> const &one = AnyOf(m_databases), &other = AnyOf(m_databases);
        switch (m_choices.Below(6)) {
        case 0:
            return void(*one = *other);
        case 1:
            return m_databases[0].swap(m_databases[1]);
        case 2:
            return void(m_databases[0] = std::make_unique<ParameterDatabase>(*other));
        case 3:
            return void(m_databases[1] = std::make_unique<ParameterDatabase>(std::move(*m_databases[0])));
        case 4:
            one->Format();
            return CheckDatabase(*one);
        default:
            m_databases[2] =
                std::make_unique<ParameterDatabase>(Flag() ? m_layouts[Flag() ? 1 : 0].get() : nullptr);
        }
    }

    void CheckDatabase(ParameterDatabase const& database) {
        ParameterDatabase copy(database), back(database.GetLayout());
        std::ostringstream out, again;
        WriteReport report;
        if (!WriteStream(database, out, {}, &report)) {
            return Check(!report.m_sentence.empty(), "a write that says nothing");
        }
        Check(WriteStream(copy, again) && again.str() == out.str(), "the copy of a database");
        std::istringstream in(out.str());
        Check(ReadStream(back, in), "the file of a database");
        BuildTicket const ticket(database.GetLayout());
    }

    ParameterNode Step(ParameterNode const& at) {
        if (at.m_isContainer && at.m_pNode->m_isProfileList) {
            return Flag() ? at.GetProfile(Name()) : at.GetDefault();
        }
        if (at.m_isContainer) {
            return Flag() ? at.GetListNode(m_choices.Below(3)) : at.GetDefault();
        }
        LayoutNode const& layout = *at.m_pNode;
        return layout.Size() == 0
                   ? at
                   : at.Get(&layout.At(m_choices.Below(std::min<std::size_t>(layout.Size(), 256))));
    }

    void UseCursor() {
        ParameterDatabase& database = *AnyOf(m_databases);
        ParameterNode node = m_held.IsValid() && Flag() ? m_held : database.GetProfileEditor();
        for (ParameterNode next = node; next.IsValid() && m_choices.Below(4) != 0; next = Step(node)) {
            node = next;
        }
        m_held = node;
        if (node.IsValid()) {
            CallCursor(database, node);
        }
    }

    void CallCursor(ParameterDatabase& database, ParameterNode& node) {
        switch (ContentList list; m_choices.Below(12)) {
        case 0:
            return node.SetValue<std::int32_t>(3);
        case 1:
            return node.SetValue(Text());
        case 2:
            return node.SetValueFromText(Text());
        case 3:
            m_held = ParameterNode();
            return node.Clear();
        case 4:
            return node.CreateContentList(list);
        case 5:
            return void(node.Query(Name()));
        case 6:
            node.SetReadOnly(Flag()), node.SetHidden(Flag());
            return node.SetDisableAddRemove(Flag());
        case 7:
            node.SetCanBeDeleted(Flag()), node.SetNameReadOnly(Flag());
            return node.SetUserDefaultProfile(Flag());
        case 8:
        case 9:
            return IsSmall(database) ? void(m_held = node.AddListNode(Flag())) : void();
        default:
            return IsSmall(database) ? void(m_held = node.AddProfile(Name(), Flag())) : void();
        }
    }

    // --- Bags, alone and in tickets

    static std::size_t Count(Bag const& bag) {
        std::size_t count = 1;
        for (auto const& [name, property] : bag) {
            if (auto const* const inner = dynamic_cast<Bag const*>(property->GetPolymorphicValue())) {
                count += Count(*inner);
            } else if (auto const* const bags = PropertyCast<Bags>(property)) {
                for (std::int32_t i = 0; i < static_cast<std::int32_t>(bags->m_value.GetNumProperties());
                     ++i) {
                    count += Count(bags->m_value.GetProperty(i));
                }
            }
            ++count;
        }
        return count;
    }

    Bag& WalkBags() {
        BuildTicket& ticket = m_tickets[m_choices.Below(2)];
        KelAM::ExternalPropertyID const id(Name());
        Bag* const tops[] = {&m_bag, &m_bag, &ticket.GetDefaults(),
                             ticket.GetPartOverrides().GetProperties(id, true),
                             ticket.GetObjectProperties().GetProperties(id, true)};
        Bag* bag = tops[m_choices.Below(std::size(tops))];
        while (m_choices.Below(3) != 0) {
            std::wstring_view const name = Name();
            Bags* const bags = bag->GetValuePointer<Bags>(name, false);
            Bag* const set = bag->GetValuePointer<KelAM::SubProperties>(name, false);
            if (Bag* const inner = bag->GetValuePointer<Bag>(name, false)) {
                bag = inner;
            } else if (set != nullptr) {
                bag = set;
            } else if (bags != nullptr && bags->GetNumProperties() != 0) {
                bag = &bags->GetProperty(0);
            }
        }
        return *bag;
    }

    void ChangeBag() {
        Bag &bag = WalkBags(), &other = WalkBags();
        std::wstring_view const name = Name();
        if (Count(other) > MostItems || Count(bag) > MostItems) {
            return bag.RemoveProperty(std::wstring(name), false);
        }
        switch (m_choices.Below(16)) {
        case 0:
            return void(bag = other);
        case 1:
            return bag.Merge(other, Flag());
        case 2:
            return void(bag.SetValue<Bag>(name, other));
        case 3:
            return bag.RemoveProperty(std::wstring(name), Flag());
        case 4:
            return ChangeProperty(bag.FindProperty(name), other);
        case 5:
            return void(bag.CreateValue<KelAM::SubProperties>(name, Flag()));
        case 6:
            return void(bag.CreateValue<double>(name, Flag()));
        case 7:
            return void(bag.GetValuePointer<Bag>(name, true));
        case 8:
            return void(bag.GetValuePointer<Bags>(name, true)->AddProperty());
        case 9:
            return bag.GetValuePointer<Bags>(name, true)->Swap(*other.GetValuePointer<Bags>(Name(), true));
        case 10:
            return void(*bag.GetValuePointer<Bags>(name, true) = *other.GetValuePointer<Bags>(Name(), true));
        case 11:
            return bag.GetValuePointer<Bags>(name, true)->Clear();
        case 12:
            return CheckBag(bag);
        case 13:
            return void(bag.SetValue<KelAM::FileContent>(name, {Text(), {std::byte{1}}}));
        case 14:
            return void(bag.SetValue<std::int32_t>(name, 7));
        default:
            return SetText(bag, Flag() ? KelAM::PropertyNames::Text::ObjectType : name);
        }
    }

    void SetText(Bag& bag, std::wstring_view name) {
        using namespace KelAM::ObjectTypes;
        static std::wstring const types[] = {ObjectTypePartInstance, ObjectTypePlatform,
                                             ObjectTypeUniquePart};
        bag.SetValue<std::wstring>(name, Flag() ? types[m_choices.Below(std::size(types))] : Text());
    }

    void ChangeProperty(IPersistentProperty* property, Bag& other) {
        if (property != nullptr) {
            property->SetDeleted(Flag());
            std::unique_ptr<IPersistentProperty> clone(property->Clone());
            Check(clone->IsEqual(property) || !(other == other), "the clone");
            Flag() ? other.AddProperty(Name(), clone.release())
                   : property->Assign(other.FindProperty(Name()));
        }
    }

    void CheckBag(Bag const& bag) {
        PersistentProperty<Bag> const copy(bag);
        PersistentProperty<Bag> back;
        MFile file, again;
        copy.Write(file);
        back.Read(file);
        back.Write(again);
        Check(file.GetBytes() == again.GetBytes() && copy.m_value == bag, "the copy of a bag");
    }

    void ChangeTickets() {
        BuildTicket &one = m_tickets[m_choices.Below(2)], &other = m_tickets[m_choices.Below(2)];
        std::stringstream file;
        switch (m_choices.Below(6)) {
        case 0:
            return void(one = other);
        case 1:
            return one.CleanUp();
        case 2:
            return void(one = BuildTicket(Flag() ? m_layouts[0].get() : nullptr));
        case 3:
            return Count(one.GetPartOverrides()) < MostItems
                       ? one.ConvertFromInternalBuildTicket(Flag() ? other.GetPartOverrides()
                                                                   : other.GetObjectProperties())
                       : void();
        default:
            BuildTicketWriteOptions options;
            options.m_version = static_cast<std::int32_t>(m_choices.Below(4));
            BuildTicket back(nullptr);
            Check(!m_checksTickets || (SaveBuildTicket(file, one, options) && LoadBuildTicket(file, back)),
                  "the file of a ticket");
        }
    }

    Choices m_choices;
    bool m_checksTickets; ///< or databases, at the end
    std::string m_fault;
    LayoutNode m_loose{L"", Group, L""};
    std::size_t m_nodes = 0, m_lists = 0;
    // In the order of their lives: copies of nodes go from the first layout to the second one.
    std::unique_ptr<ParameterLayout> const m_layouts[2] = {std::make_unique<ParameterLayout>(),
                                                           std::make_unique<ParameterLayout>()};
    std::unique_ptr<ParameterDatabase> m_databases[3] = {std::make_unique<ParameterDatabase>(nullptr),
                                                         std::make_unique<ParameterDatabase>(nullptr),
                                                         std::make_unique<ParameterDatabase>(nullptr)};
    ParameterNode m_held; ///< gone with whatever may end its bag
    BuildTicket m_tickets[2] = {BuildTicket(nullptr), BuildTicket(nullptr)};
    Bag m_bag;
};

} // namespace

std::string FaultOfCalls(std::string const& bytes, unsigned share) {
    Player player(bytes, share);
    player.Play();
    return player.Fault();
}

} // namespace Fuzz
