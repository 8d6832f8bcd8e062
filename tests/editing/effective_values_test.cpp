// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/sample/sample_layout.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/sub_properties.h>

#include <gtest/gtest.h>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

using Lines = std::vector<std::wstring>;

constexpr wchar_t const* Part = L"5b1c9c5e-2f0d-4e0e-9d8a-2d6a8e6c1f01";

Lines LinesOf(BuildTicket const& ticket, std::wstring const& part, ParameterLayout const& layout) {
    static wchar_t const* const sources[] = {L"layout", L"ticket", L"part"};
    Lines lines;
    for (EffectiveValue const& value : EffectiveValues(ticket, part, layout)) {
        lines.push_back(value.property + L" = " + value.text + L" (" +
                        sources[static_cast<std::size_t>(value.source)] +
                        (value.node == nullptr ? L", undeclared)" : L")"));
        EXPECT_EQ(value.value == nullptr, value.source == EffectiveValue::Source::LayoutDefault);
        EXPECT_TRUE(value.node == nullptr || value.node->m_propName == value.property);
    }
    return lines;
}

TEST(EffectiveValuesTest, AreThoseOfThePartElseOfTheTicketElseOfTheLayout) {
    Sample::ParameterLayout const layout;
    BuildTicket ticket(&layout);
    ticket.GetDefaults().SetValue<std::wstring>(L"BasicProcessor.ProfileExport", L"Fine");
    ticket.GetDefaults().SetValue<bool>(L"BasicProcessor.SampleCheckbox", false);
    ticket.GetDefaults().SetValue<double>(L"Zone", 0.1);
    ticket.GetDefaults().SetValue<std::wstring>(L"Gone", L"x").second->SetDeleted(true);
    auto& overrides = *ticket.GetPartOverrides().GetProperties(KelAM::ExternalPropertyID(Part), true);
    overrides.SetValue<std::wstring>(L"BasicProcessor.ProfileExport", L"Coarse");
    overrides.SetValue<bool>(L"BasicProcessor.SampleCheckbox", true).second->SetDeleted(true);
    overrides.SetValue<KelAM::SubProperties>(L"{7C0E2A44}", {});
    overrides.SetValue<std::int32_t>(L"Count", 3);
    overrides.CreateValue<std::wstring>(L"Count", true);

    Lines const common = {L"BasicProcessor.ProfilePreSlicing = Default (layout)",
                          L"BasicProcessor.ProfileSlicing = Default (layout)",
                          L"BasicProcessor.SampleCheckbox = false (ticket)",
                          L"BasicProcessor.SampleText = SomeStringValue (layout)"};
    Lines ofPart = common, ofOthers = common;
    ofPart.insert(ofPart.end(),
                  {L"BasicProcessor.ProfileExport = Coarse (part)", L"Count = 3 (part, undeclared)",
                   L"Zone = 0.1 (ticket, undeclared)", L"{7C0E2A44} = SubProperties (part, undeclared)"});
    ofOthers.insert(ofOthers.end(),
                    {L"BasicProcessor.ProfileExport = Fine (ticket)", L"Zone = 0.1 (ticket, undeclared)"});
    EXPECT_EQ(LinesOf(ticket, Part, layout), ofPart);
    EXPECT_EQ(LinesOf(ticket, L"{5B1C9C5E-2F0D-4E0E-9D8A-2D6A8E6C1F01}", layout), ofPart);
    EXPECT_EQ(LinesOf(ticket, L"", layout), ofOthers);
    EXPECT_EQ(LinesOf(ticket, L"7c0e2a44-51c7-4f1e-8a77-0d0f5f8b2a02", layout), ofOthers);
}

TEST(EffectiveValuesTest, HaveWhatTheirNodesDeclareOnceAndListsAsWholes) {
    ParameterLayout layout;
    LayoutNode* const group = layout.m_platformOptions->AddNode(L"Laser");
    group->AddNode(L"Power", Double, L"2.50")->SetPropName(L"Power");
    group->AddNode(L"Mode", Options, L"")->AddOption(L"Fast", L"")->SetPropName(L"Mode");
    LayoutNode* const list =
        layout.m_partOptions->AddNode(L"Zones")->SetList(true, L"Zone", L"")->SetPropName(L"Zones");
    list->AddNode(L"Begin", Double, 0.0)->SetPropName(L"Begin");
    layout.m_partConfigurator->AddNode(L"Power", Double, 9.0)->SetPropName(L"Power");
    layout.m_partConfigurator->AddNode(L"Broken", Int, L"12abc")->SetPropName(L"Broken");

    BuildTicket ticket(&layout);
    EXPECT_EQ(LinesOf(ticket, Part, layout), (Lines{L"Power = 2.5 (layout)", L"Mode = Fast (layout)",
                                                    L"Zones =  (layout)", L"Broken = 12abc (layout)"}));
    ticket.GetDefaults().CreateValue<IndexedProperties<PersistentProperties>>(L"Zones", true);
    EXPECT_EQ(LinesOf(ticket, Part, layout)[2], L"Zones = IndexedPropertySets (ticket)");
}

} // namespace
