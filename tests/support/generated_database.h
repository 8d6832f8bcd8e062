// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/characters.h"

#include <zantrel/database/parameter_database.h>
#include <zantrel/database/value_type.h>
#include <zantrel/layout/parameter_layout.h>

#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace TestSupport {

using namespace Zantrel;

/// Layouts and values that look different for each seed and the same everywhere. What a file is known to lose
/// is left out.
class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    std::unique_ptr<ParameterLayout> MakeLayout() {
        auto layout = std::make_unique<ParameterLayout>();
        layout->m_name = Name();
        m_nodesLeft = 30;
        if (Chance(2)) {
            AddNodes(*layout->m_profileEditor->AddNode(L"GenericParameters"), 1);
        }
        AddNodes(*layout->m_profileEditor, 0);
        return layout;
    }

    /// Sets values, adds profiles and items, and sets flags below `node`, all of it at random.
    void FillContent(ParameterNode node) {
        LayoutNode const& layout = *node.m_pNode;
        VisitValueType(layout.m_type, [&]<class T>(TypeTag<T>) {
            if constexpr (std::is_same_v<T, NoValue>) {
                for (LayoutNode const* const child : layout.m_children) {
                    Fill(node.Get(child));
                }
            } else if (layout.m_type == StandardOptions) {
                node.SetValueFromText(Text() + L"x");
            } else if (!Chance(5)) {
                node.SetValue<T>(Value(T()));
            }
        });
    }

    /// Below `end`.
    unsigned Below(unsigned end) { return static_cast<unsigned>(m_random() % end); }

    bool Chance(unsigned oneIn) { return Below(oneIn) == 0; }

    /// Some text that XML can carry.
    std::wstring Text() {
        static wchar_t const* const pieces[] = {L" ",   L"\t", L"\n",    L"\r",  L"\r\n",
                                                L"]]>", L"<",  L"&amp;", L"\"'", L"-->"};
        std::wstring text;
        for (unsigned count = Below(3) * Below(6); count != 0; --count) {
            unsigned const kind = Below(4);
            if (kind == 1) {
                AppendAnyCharacter(text);
            } else {
                text += kind == 0 ? pieces[Below(std::size(pieces))]
                                  : std::wstring(1, static_cast<wchar_t>(L'!' + Below(94)));
            }
        }
        return text;
    }

    /// Any value of a type, often one at its limits.
    std::int32_t Value(std::int32_t) {
        static std::int32_t const edges[] = {0, -1, std::numeric_limits<std::int32_t>::min(),
                                             std::numeric_limits<std::int32_t>::max()};
        return Chance(2) ? edges[Below(std::size(edges))]
                         : std::bit_cast<std::int32_t>(static_cast<std::uint32_t>(m_random()));
    }
    double Value(double) {
        static double const edges[] = {0.0,      -0.0,      0.1, 1e23, 5e-324, -1.7976931348623157e308,
                                       INFINITY, -INFINITY, NAN};
        if (Chance(3)) {
            return edges[Below(std::size(edges))];
        }
        std::uint64_t const high = m_random();
        return std::bit_cast<double>(high << 32 | m_random());
    }
    bool Value(bool) { return Chance(2); }
    std::wstring Value(std::wstring const&) { return Text(); }
    KelAM::FileContent Value(KelAM::FileContent const&) {
        std::vector<std::byte> bytes(Chance(3) ? 256 : Below(7));
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<std::byte>(bytes.size() == 256 ? i : m_random());
        }
        return {Text(), std::move(bytes)};
    }

private:
    void AppendAnyCharacter(std::wstring& text) {
        unsigned const code = 0x20 + Below(0x110000 - 0x20);
        bool const asPair =
            Chance(2); // it is joined; asked for everywhere, so that all platforms go on alike
        if (code > 0xFFFF) {
            text += asPair ? Pair(code) : Character(code);
        } else if ((code < 0xD800 || code > 0xDFFF) && code != 0xFFFE && code != 0xFFFF) {
            text += static_cast<wchar_t>(code);
        }
    }

    /// A name of an element, never the same twice.
    std::wstring Name() {
        static wchar_t const* const starts[] = {
            L"a", L"_", L"Value", L"Z.-", L"\x00C4\x00DF", L"\x65E5\x672C", L"\x03A9\x0301"};
        return starts[Below(std::size(starts))] + std::to_wstring(++m_names);
    }

    void AddNodes(LayoutNode& parent, unsigned depth) {
        for (unsigned count = 1 + Below(4); count != 0 && m_nodesLeft != 0; --count, --m_nodesLeft) {
            bool const isReserved = Chance(8) && parent.GetNode(L"Value") == nullptr;
            std::wstring const name = isReserved ? L"Value" : Name();
            auto const type = depth < 4 && Chance(3) ? Group : static_cast<eTypeLayoutNode>(Below(11));
            LayoutNode* const node = LayoutNode::MakeNode(name.c_str(), type);
            node->SetMultiplicity(Below(3))->SetIsList(Chance(4))->SetIsProfileList(type == Group &&
                                                                                    Chance(3));
            node->SetNodeName(Name())->SetDefaultValue(L"1")->AddOption(L"first", L"");
            parent.AppendNode(node);
            if (type == Group) {
                AddNodes(*node, depth + 1);
            }
        }
    }

    void SetFlags(ParameterNode node) {
        node.SetReadOnly(Chance(4));
        node.SetHidden(Chance(4) && node.m_pNode->m_name != L"GenericParameters");
    }

    void Fill(ParameterNode node) {
        if (!node.m_isContainer) {
            SetFlags(node);
            FillContent(node);
        } else if (node.m_pNode->m_isProfileList) {
            node.SetDisableAddRemove(Chance(3));
            FillContent(node.GetDefault());
            std::set<std::wstring> names;
            for (unsigned count = Below(4); count != 0; --count) {
                if (std::wstring const name = Text(); names.insert(name).second) {
                    ParameterNode profile = node.AddProfile(name.c_str(), Chance(2));
                    profile.SetReadOnly(Chance(3));
                    profile.SetNameReadOnly(Chance(2));
                    profile.SetUserDefaultProfile(Chance(2));
                    FillContent(profile);
                }
            }
        } else {
            SetFlags(node);
            for (unsigned count = Below(4); count != 0; --count) {
                ParameterNode const item = node.AddListNode(Chance(2));
                SetFlags(item);
                FillContent(item);
            }
        }
    }

    std::mt19937 m_random;
    unsigned m_names = 0;
    unsigned m_nodesLeft = 0;
};

} // namespace TestSupport
