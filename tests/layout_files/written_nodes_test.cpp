// SPDX-License-Identifier: Apache-2.0
#include "layout_files/vocabulary.h"
#include "tests/layout_files/layout_formats.h"
#include "tests/support/document_text.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

using namespace TestSupport;

namespace {

std::string TypeAttribute(LayoutWord::TypeWord const& type) {
    return type.word.empty() ? "" : " Type='" + std::string(type.word) + '\'';
}

/// The node that comes back in place of one with everything, before the format's own touches.
LayoutNode Back(eTypeLayoutNode type) {
    LayoutNode node(L"Full", type, type == Group ? L"" : L"d&");
    node.SetPropName(L"pn")->SetDisplayName(L"dn");
    return node;
}

} // namespace

class WrittenNode : public testing::TestWithParam<int> { // the last is no type
protected:
    WrittenNode() {
        for (wchar_t const* const name : {L"Bare", L"Full"}) {
            m_layout.m_partOptions->AppendNode(LayoutNode::MakeNode(name, m_type));
        }
        SetEverything(*m_layout.m_partOptions->Back(), *m_layout.m_platformOptions,
                      *m_layout.m_profileEditor);
    }
    std::string Written(LayoutFormat const& format, char const* section) const {
        return std::regex_replace(ContentOfElement(Flat(WriteText(format, m_layout)), section),
                                  std::regex("PropertyNode"), "N");
    }

    eTypeLayoutNode m_type = static_cast<eTypeLayoutNode>(GetParam());
    LayoutWord::TypeRow m_words = GetParam() < 11 ? LayoutWord::Types[GetParam()] : LayoutWord::TypeRow();
    ParameterLayout m_layout, m_back;
};

INSTANTIATE_TEST_SUITE_P(OfEachType, WrittenNode, testing::Range(0, 12));

TEST_P(WrittenNode, StandsInAMetaFileWithAllOfIt) {
    std::string const common =
        " VisibilityRequest='vr' DisplayName='dn' Postfix='po' Prefix='pr' Description='&lt;&quot;de'"
        " Expanded='True' HideParameterName='True' IsReadOnly='True' Visible='False' AllowNull='True' Max='9'"
        " Min='1' ValueUnique='True' PropertyName='pn' DisplayNameSharedSizeGroup='dg'"
        " PostfixSharedSizeGroup='pg' DescriptionImage='im' DescriptionImageStretch='Fill'"
        " LicenseForEditorPaneVisibility='l1;l2' VisibilityIdentifier='id' EditabilityIdentifier='id'"
        " DisableForParents='true' DisableForSubParts='true' ProfileEditingPolicy='pp'"
        " ShowOnlyPartsSelectedInTessra='False' VisibilitySource='s1;s2' VisibleValue='True;v;'"
        " EditabilitySource='s2;s1' EditableValue='e;False'";
    std::string const ofText =
        " EnableMultiLine='True' Regex='re' RegexUserFriendly='ru' MaxLength='18446744073709551615'";
    std::string const options =
        "<Options><Option DisplayName='O&amp;'>o1</Option><Option>o;2</Option><Option>o3</Option></Options>";
    // What only some types have: before the word, of a node with nothing set, and with everything.
    auto const [before, bare, full] = std::map<eTypeLayoutNode, std::array<std::string, 3>>{
        {Double, {"", " Precision='4'", " Precision='-2'"}},
        {Distance, {"", " Precision='4' Postfix='mm'", " Precision='-2'"}},
        {String, {" ProcessorRequest='rq'", "", ""}},
        {OptionsFromProfiles,
         {"", " ProfileName=''", " ProfileName='pl' ProcessorRequest='rq' TriggerPropertyName='tr'"}},
        {FileAbsolute, {"", "", " FileFilter='*.x'"}},
        {StandardOptions, {"", "", " OptionsByDriverRequest='rq'"}}}[m_type];
    std::string const type = TypeAttribute(m_words.inMetaFile);
    EXPECT_EQ(Written(MetaFile, "PartOptions"),
              "<Bare" + type + bare + (m_type == Options ? "><Options/></Bare><Full" : "/><Full") + before +
                  type + full + common + (m_type == String ? ofText : "") + ">d&amp;" +
                  (m_type == Options ? options : "") + "</Full>");

    ASSERT_TRUE(ReadText(MetaFile, m_back, WriteText(MetaFile, m_layout)));
    bool const hasWord = !m_words.inMetaFile.word.empty();
    LayoutNode expected = Back(!hasWord ? Double : m_words.inMetaFile.isRead ? m_type : String);
    expected.SetProfileName(m_type == OptionsFromProfiles ? L"pl" : L"");
    EXPECT_EQ(Outline(m_back.m_partOptions->At(1)),
              Outline(expected) +
                  (m_type == Options
                       ? "{Options{Option:Double'o1'(shown=O&) Option:Double'o;2' Option:Double'o3'}}"
                       : ""));
    std::string const again = ContentOfElement(Flat(WriteText(MetaFile, m_back)), "PartOptions");
    for (char const* lost : {"vr", "po'", "de", "True", "False", "true", "im", "id", "s1", "re'", "rq"}) {
        EXPECT_EQ(again.find(lost), again.npos) << again;
    }
}

TEST_P(WrittenNode, StandsInATemplateWithLittleOfIt) {
    m_layout.m_partOptions->Back()->SetIsList(true)->SetIsProfileList(true);
    bool const isPrecise = m_type == Double || m_type == Distance;
    std::string const type = TypeAttribute(m_words.inTemplate);
    EXPECT_EQ(Written(PropertyTemplate, "Defaults"),
              "<N Name='Bare'" + type +
                  (isPrecise           ? " Precision='4'"
                   : m_type == Options ? " Options=''"
                                       : "") +
                  "/><N Name='Full'" + type +
                  (isPrecise           ? " Precision='-2'"
                   : m_type == Options ? " Options='o1;o;2;o3'"
                                       : "") +
                  " ProfileList='' List='' DisplayName='dn' DisplayNameContainer='cn' PropertyName='pn'"
                  " ProfileName='pl' Default='d&amp;'/>");

    ASSERT_TRUE(ReadText(PropertyTemplate, m_back, WriteText(PropertyTemplate, m_layout)));
    LayoutNode expected = Back(m_type == Distance ? Double : m_words.inTemplate.isRead ? m_type : String);
    expected.SetProfile(true, L"")->SetList(true, L"ListItem", L"")->SetContainerDisplayName(L"cn");
    expected.SetProfileName(L"pl");
    EXPECT_EQ(Outline(m_back.m_platformOptions->At(1)), Outline(expected));
}
