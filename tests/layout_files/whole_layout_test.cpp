// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/layout_files/reading_cases.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

std::string Narrow(std::wstring const& text) { return StringConversion::NativeToUtf8(text); }

/// Where a node stands, as in "/0/3".
std::string PlaceOf(LayoutNode const* node) {
    std::string place;
    while (node != nullptr && node->m_parent != nullptr) {
        std::size_t at = 0;
        while (&node->m_parent->At(at) != node) {
            ++at;
        }
        place.insert(0, '/' + std::to_string(at));
        node = node->m_parent;
    }
    return node != nullptr ? place + '/' : "none";
}

/// All that a node and those below it say, but for addresses: other nodes stand there with their places.
void Say(LayoutNode const& node, std::string& said) {
    auto const say = [&](auto const&... fields) {
        auto const one = [&](auto const& field) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(field)>>) {
                said += std::to_string(field) + ' ';
            } else if constexpr (std::is_convertible_v<decltype(field), std::wstring>) {
                said += '\'' + Narrow(field) + "' ";
            } else {
                said += '[';
                for (auto const& part : field) {
                    if constexpr (std::is_same_v<std::decay_t<decltype(part)>, LayoutNodeSource>) {
                        said += PlaceOf(part.m_source) + '=' + Narrow(part.m_value) + ' ';
                    } else {
                        said += '\'' + Narrow(part) + "' ";
                    }
                }
                said += ']';
            }
        };
        (one(fields), ...);
        said += '\n';
    };
    say(node.m_name, int{node.m_type}, node.m_identifier, node.m_defaultValue, node.m_min, node.m_max);
    say(node.m_isList, node.m_isProfileList, node.m_isCategoryList, node.m_userCanAddRemove,
        node.m_userCanSort, node.m_userCanRemoveAnyElement, node.m_canBeTransformed, node.m_nodeName,
        node.m_nodeDisplayName, node.m_containerDisplayName, node.m_containerDescription, node.m_multiplicity,
        node.m_multiplicityMax, node.m_multiplicityMin, node.m_multiplicityMaxMessage,
        node.m_multiplicityMinMessage);
    say(node.m_visible, node.m_readOnly, node.m_expanded, node.m_hideName, node.m_performTransform,
        node.m_precision, node.m_displayName, node.m_optionDisplayNames, node.m_prefix, node.m_postfix,
        node.m_description, node.m_imageDescription, node.m_imageStretch, node.m_displayNameSharedSizeGroup,
        node.m_postfixSharedSizeGroup, node.m_visibilitySources, node.m_editabilitySources);
    say(node.m_allowEmpty, node.m_isValueUnique, node.m_enableMultiLine, node.m_writeToParameterFile,
        node.m_childrenWriteToParameterFile, node.m_disableForParents, node.m_disableForSubParts,
        node.m_showOnlyPartsSelectedInTessra, node.m_profileName, node.m_requestName,
        node.m_triggerPropertyName, node.m_fileFilter, node.m_optionValues, node.m_visibilityRequest,
        node.m_regex, node.m_regexUserFriendly, node.m_maxLength, node.m_profileEditingPolicy,
        node.m_editorLicenseChecks, node.m_propName);
    said += "from " + PlaceOf(node.m_profileNode) + " at " + PlaceOf(&node) + '\n';
    for (LayoutNode const* const child : node.m_children) {
        Say(*child, said);
    }
}

std::string AllOf(LayoutNode const& node) {
    std::string said;
    Say(node, said);
    return said;
}

template <class... Fields> void Clear(Fields&... fields) { ((fields = Fields()), ...); }

bool IsBlank(std::wstring const& text) { return text.find_first_not_of(L" \t\r\n") == text.npos; }

/// What a container has and other nodes have no place for, and the one place for two display names.
void ForgetOfContainer(LayoutNode& node) {
    node.m_isProfileList = node.m_isProfileList || node.m_isCategoryList;
    bool const isContainer = node.m_isList || node.m_isProfileList;
    bool const isChoice = node.m_type == OptionsFromProfiles && !node.m_profileName.empty();
    LayoutNodeListSettings settings;
    settings.m_isProfileList = node.m_isProfileList;
    settings.m_isCategoryList = node.m_isCategoryList;
    settings.m_nodeName = isContainer ? node.m_nodeName : isChoice ? node.m_profileName : L"ListItem";
    settings.m_containerDisplayName = isContainer ? node.m_containerDisplayName : L"";
    settings.m_containerDescription = isContainer ? node.m_containerDescription : L"";
    std::wstring const shown =
        isContainer && !node.m_nodeDisplayName.empty() ? node.m_nodeDisplayName : node.m_displayName;
    if (!node.m_isList) {
        static_cast<LayoutNodeListSettings&>(node) = settings;
    }
    node.m_nodeDisplayName = node.m_isList ? shown : L"";
    node.m_displayName = node.m_isList ? L"" : shown;
    node.m_performTransform = node.m_performTransform && node.m_isList && node.m_canBeTransformed;
}

/// All that no file holds.
void Forget(LayoutNode& node) {
    eTypeLayoutNode const type = node.m_type;
    if (node.m_profileNode == nullptr) { // names no list
        Clear(node.m_profileName);
    }
    ForgetOfContainer(node);
    if (type != String) {
        Clear(node.m_enableMultiLine, node.m_regex, node.m_regexUserFriendly, node.m_maxLength);
    }
    if (type != OptionsFromProfiles) {
        Clear(node.m_profileName, node.m_triggerPropertyName);
    }
    if (type != OptionsFromProfiles && type != String && type != StandardOptions) {
        Clear(node.m_requestName);
    }
    if (type != FileAbsolute) {
        Clear(node.m_fileFilter);
    }
    if (type != Options) {
        Clear(node.m_optionValues);
    }
    node.m_optionDisplayNames.resize(node.m_optionValues.size());
    if (type == Group || ((type == Options || node.Size() != 0) && IsBlank(node.m_defaultValue))) {
        Clear(node.m_defaultValue);
    }
    if (type >= Int && type <= Bool) { // so that nothing is to be said of them
        node.m_min = node.m_max = type == Bool ? L"" : std::to_wstring(node.m_min.size());
    }
    for (auto* const conditions : {&node.m_visibilitySources, &node.m_editabilitySources}) {
        for (std::size_t i = 0; i + 1 < conditions->size(); ++i) {
            std::erase(conditions->at(i).m_value, L';'); // the last one's has all that is too much
            std::erase(conditions->at(i + 1).m_value, L';');
        }
    }
    node.m_precision = type == Double || type == Distance ? node.m_precision : 4;
    node.m_writeToParameterFile = node.m_childrenWriteToParameterFile = true;
    node.m_expanded = node.m_expanded || node.m_name == L"Options"; // or else it could be choices
    for (LayoutNode* const child : node.m_children) {
        Forget(*child);
    }
}

/// What only WriteWholeFile writes.
void ForgetOfWhole(LayoutNode& node) {
    if (node.m_imageDescription.empty() || node.m_imageStretch.empty()) {
        node.SetImageDescription(L"", L"None");
    }
    node.m_postfix = node.m_type == Distance && node.m_postfix.empty() ? L"mm" : node.m_postfix;
    node.m_userCanRemoveAnyElement = node.m_userCanRemoveAnyElement || !node.m_userCanAddRemove;
    node.m_defaultValue = node.Size() == 0 ? node.m_defaultValue : L"";
    for (LayoutNode* const child : node.m_children) {
        ForgetOfWhole(*child);
    }
}

std::wstring Sentences(ReadReport const& report) {
    std::wstring sentences;
    for (ReadReport::Entry const& entry : report.m_entries) {
        sentences += ReadReport::Format(entry) + L'\n';
    }
    return sentences;
}

} // namespace

TEST(WholeLayout, ComesBackInEveryField) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        TranslatedLayout layout;
        LayoutGenerator(seed).Fill(layout, 60);
        Forget(layout);
        if (layout.m_categoryOption.GetNode() != nullptr) { // which is made anew
            LayoutNode const& list = *layout.FindCategoryNode();
            layout.m_categoryOption->SetProfileName(list.m_name)->SetDisplayName(list.m_displayName);
        }
        for (unsigned key = 0; key < seed % 4; ++key) {
            layout.dictionary.AddTranslation(std::to_wstring(key) + L"<\n", L"l", Generator(seed).Text());
        }
        for (LayoutFormat const& format : {WholeMetaFile, MetaFile}) {
            if (format.writeStream == MetaFile.writeStream) {
                ForgetOfWhole(layout);
                static_cast<PersistentProperties&>(layout.dictionary) = PersistentProperties();
            }
            TranslatedLayout back;
            ReadReport report;
            std::string const document = WriteText(format, layout);
            ASSERT_TRUE(ReadText(WholeMetaFile, back, document, &report));
            ASSERT_EQ(WriteText(format, back), document);
            ASSERT_EQ(AllOf(back), AllOf(layout)) << document;
            ASSERT_EQ(Dump(back.dictionary), Dump(layout.dictionary));
            ASSERT_EQ(Sentences(report), L"") << document;
        }
    }
}

TEST(WholeLayout, SaysWhatItsFileSays) {
    struct Row {
        std::string content; ///< of the part configurator
        std::string written; ///< where it isn't the same
        char const* notes = "";
    };
    std::string const list = " Type='ListContainer'",
                      grows = " CanUserAddRemove='True' CanUserSort='False' RemovingType='RemoveAny'";
    Row const rows[] = {
        {"<A><B/></A><C>1.5</C>", "<A><B/></A><C Type='Double' Precision='4'>1.5</C>"},
        {"<A Type='Distance' Precision=' +5'>1</A><B Type='Distance' Precision='4' Postfix=''/>",
         "<A Type='Distance' Precision='5' Postfix='mm'>1</A><B Type='Distance' Precision='4' Postfix=''/>"},
        {"<InheritOverrides><A><OverrideEntry/></A></InheritOverrides><B Type='Group'/>",
         "<A/><B Type='String'/>", "The type \"Group\" is not known here; the parameter becomes a text.\n"},
        // Choices
        {"<A Options='a;;b'>a</A><B Options=''/><C Type='Int' Options='a'>1</C>",
         "<A Type='String'>a<Options><Option>a</Option><Option/><Option>b</Option></Options></A>"
         "<B Type='String'><Options/></B><C Type='Int'>1</C>",
         "The attribute Options=\"a\" is not known here and was passed over.\n"},
        {"<A Type='String' Options='x'>y<Options><Option DisplayName='d'>y<Z/></Option><X/></Options></A>",
         "<A Type='String'>y<Options><Option DisplayName='d'>y</Option></Options></A>",
         "The element \"Z\" is not known here and was passed over.\n"
         "The element \"X\" is not known here and was passed over.\n"},
        {"<A Type='String'><Options/></A><B Type='String'><Options><C/></Options></B>", ""},
        {"<A Type='String'><Options Expanded='True'/></A><B><Options><Option/></Options></B>", ""},
        {"<A Type='OptionsFromProfiles' ProfileName='none'/><B Type='OptionsFromProfiles' ProfileName=''/>",
         "", "There is no profile list \"none\" to choose from.\n"},
        // Containers
        {"<L @L Multiplicity='-1' RemovingType='x' CanUserSort='x'><I/><J><K/></J></L>",
         "<L" + list + grows + "><I/></L>",
         "The attribute CanUserSort=\"x\" is no flag and counts as absent.\n"
         "Multiplicity=\"-1\" is no whole number that it can be, and counts as absent.\n"
         "RemovingType=\"x\" is none of the words that it can be.\n"
         "A container holds one element; this one was passed over.\n"},
        {"<L ProfilesXMLName='x'/><M @L><I @L/></M>",
         "<L ProfilesXMLName='x'><x/></L><M" + list + grows + "><I Type='String'/></M>",
         "The container holds no element that would say what it is a container of.\n"
         "The type \"ListContainer\" is not known here; the parameter becomes a text.\n"},
        {"<L @L CategoriesName='c' DisplayName='l'><I DisplayName='d'/></L>",
         "<L DisplayName='l'" + list + " CategoriesName='I'" + grows + "><I DisplayName='d'/></L>"},
        {"<L @L Multiplicity='2000000000'><I/></L>", "<L" + list + grows + "><I/></L>",
         "A database would begin with more items than can be meant; all lists of the file begin with "
         "none.\n"},
        // Conditions
        {"<A VisibilitySource='b;c;' VisibleValue='1;2;;4' EditableValue='x'/>"
         "<B VisibilityIdentifier='b' EditabilityIdentifier='b2'/>"
         "<C EditabilitySource='b2' EditableValue='p;q' VisibilitySource='b;b'/><D "
         "EditabilityIdentifier='b'/>",
         "<A VisibilitySource='b;;' VisibleValue='1;2;;4'/>"
         "<B VisibilityIdentifier='b' EditabilityIdentifier='b'/>"
         "<C VisibilitySource='b;b' VisibleValue=';' EditabilitySource='b' EditableValue='p;q'/>"
         "<D VisibilityIdentifier='b' EditabilityIdentifier='b'/>",
         "The conditions have 3 sources and 4 values.\nEditableValue=\"x\" has no sources to belong to.\n"
         "The conditions have 2 sources and 1 values.\n"
         "\"b\" is the identifier of an earlier node, too; conditions mean that one.\n"
         "No node has the identifier \"c\"; the condition is left without a source.\n"},
        // Defaults and limits
        {"<A Type='Int' Max=' 2 ' Min='1.5'>x</A><B Type='Bool'>true</B><C Type='Double' "
         "Precision='4x'>1e3</C>",
         "<A Type='Int' Max=' 2 ' Min='1.5'>x</A><B Type='Bool'>true</B><C Type='Double' "
         "Precision='4'>1e3</C>",
         "The default \"x\" isn't wholly a 32-bit integer.\nMin \"1.5\" isn't wholly a 32-bit integer.\n"
         "The default \"true\" is neither \"True\" nor \"False\", and means the latter.\n"
         "Precision=\"4x\" is no whole number that it can be, and counts as absent.\n"},
    };
    for (Row const& row : rows) {
        ParameterLayout layout;
        ReadReport report;
        ASSERT_TRUE(ReadText(WholeMetaFile, layout,
                             Document("<PartConfigurator>" + row.content + "</PartConfigurator>"), &report));
        std::string notes;
        for (ReadReport::Entry const& entry : report.m_entries) {
            notes += Narrow(entry.sentence) + '\n';
        }
        EXPECT_EQ(ContentOfElement(Flat(WriteText(WholeMetaFile, layout)), "PartConfigurator"),
                  row.written.empty() ? row.content : row.written);
        EXPECT_EQ(notes, row.notes) << row.content;
    }
}

TEST(WholeLayout, FindsTheNodesOfEveryLayout) {
    ReadingCase const rows[] = {
        {"<Version><Major Type='Int'>2</Major><Minor>3</Minor><Build Type='Int'>4</Build></Version>"
         "<Version><Minor Type='Int'>5</Minor></Version>",
         "Version{Major:Int'2' Minor:Int'3' Build:Int'4'} Version{Minor:Int'5'}"},
        {"<ProfileEditor/><PartConfigurator> </PartConfigurator><PlatformConfigurator><PartOptions/><B/>"
         "</PlatformConfigurator><Minor/><PlatformOptions/>",
         "PlatformConfigurator{PlatformOptions PartOptions B} Minor PlatformOptions"},
        {"<JobConfigurator><PartConfigurator><A/></PartConfigurator><B/"
         "><PlatformConfigurator><PartOptions><C/>"
         "</PartOptions></PlatformConfigurator></JobConfigurator><JobConfigurator><D/></JobConfigurator>",
         "PlatformConfigurator{PlatformOptions PartOptions{C}} PartConfigurator{A} JobConfigurator{B D}"},
        {"<ProfileEditor><ParameterStructure><A/></ParameterStructure><AdditionalConfiguration><B/>"
         "</AdditionalConfiguration></ProfileEditor><ParameterStructure/>",
         "ProfileEditor{A B} ParameterStructure", "untaken AdditionalConfiguration"},
        {"<ResourceDictionary><Entry Key='k'><Translation Language='l'>t</Translation></Entry>"
         "</ResourceDictionary><Entry/>",
         "Entry", "dropped ResourceDictionary"},
        {"<A><ResourceDictionary/></A><A></A><R/>", "A{ResourceDictionary} A R"},
        {"<ProfileEditor @P><A/><B/></ProfileEditor><PartConfigurator Type='Int'>1</PartConfigurator>"
         "<Version @L><Minor CategoriesName=''>1</Minor></Version><JobConfigurator @L><C/></JobConfigurator>",
         "Version{Major:Int'1' Minor:Int'1'} ProfileEditor{A B} PartConfigurator'1' JobConfigurator{C}",
         "dropped ProfileEditor dropped PartConfigurator dropped Version dropped Minor dropped "
         "JobConfigurator"},
    };
    ExpectOutlines(WholeMetaFile, rows);
}

TEST(WholeLayout, KeepsTheCategoryLevelAndWhatNamesIt) {
    struct WithCategories : ParameterLayout {
        WithCategories() { _InitCategoryLevel(true); }
    } layout;
    layout.m_profileEditor->AddNode(L"G")
        ->AddNode(L"F")
        ->SetTypeFromProfiles(layout.m_categories)
        ->SetProfileName(L"Categories");
    layout.m_categories->AddNode(L"P")->AddVisibilitySource(layout.m_genericParameters, true);
    layout.AddCategoryNodeIfNeeded();
    ParameterLayout back;
    WithCategories same;
    for (ParameterLayout* const read : {&back, static_cast<ParameterLayout*>(&same)}) {
        ASSERT_TRUE(ReadText(WholeMetaFile, *read, WriteText(WholeMetaFile, layout)));
        EXPECT_EQ(AllOf(*read), AllOf(layout));
        EXPECT_EQ(read->m_categories, read->m_profileEditor->GetNode(L"Categories"));
        EXPECT_EQ(read->m_genericParameters, read->m_profileEditor->GetNode(L"GenericParameters"));
        EXPECT_EQ(read->m_categoryOption, &read->m_platformOptions->At(0));
    }
    // A second file adds to the layout; what it names is what stands in it.
    ASSERT_TRUE(ReadText(WholeMetaFile, back, WriteText(WholeMetaFile, layout)));
    EXPECT_EQ(back.Size(), layout.Size());
    EXPECT_EQ(back.m_categories->Size(), 2u);
    EXPECT_EQ(back.m_categories->At(1).m_visibilitySources.at(0).m_source, back.m_genericParameters);
}

TEST(WholeLayout, HoldsTheSettingsOfASlicer) {
    ParameterLayout layout, back;
    std::size_t conditions = 0;
    for (std::int32_t i = 0; i < 569; ++i) {
        std::wstring const name = L"setting_" + std::to_wstring(i);
        LayoutNode& page = i % 40 == 0 ? *layout.m_profileEditor->AddNode((L"page" + name).c_str())
                                       : *layout.m_profileEditor->Back();
        bool const isChoice = i % 15 == 7;
        LayoutNode& setting = isChoice ? *page.AddNode(name.c_str(), Options, L"b")->AddOption(L"a", L"The A")
                                       : *page.AddNode(name.c_str(), i % 2 == 0 ? Double : Int, i);
        setting.SetDescription(L"What " + name + L" is for\nin \"lines\" & <signs>.")->SetDisplayName(name);
        isChoice ? setting.AddOption(L"b", L"The B") : setting.SetPostfix(L"mm/s\u00B2")->SetRange(0, i + 1);
        if (i % 3 == 0 && conditions++ < 180) { // on one that comes before or behind
            setting.AddVisibilitySource(&page, std::wstring(L"v;w"))->AddEditabilitySource(&setting, true);
        }
    }
    ReadReport report;
    ASSERT_TRUE(ReadText(WholeMetaFile, back, WriteText(MetaFile, layout), &report));
    EXPECT_EQ(AllOf(back), AllOf(layout));
    EXPECT_EQ(Sentences(report), L"");
    ReadReport told;
    ASSERT_TRUE(ReadText(MetaFile, back, WriteText(MetaFile, layout), &told));
    EXPECT_EQ(Sentences(told), L"Passed over, and taken by ReadWholeFile: choices (76), conditions (1108), "
                               L"descriptions (569), limits (1062), precisions (266), units (531).\n");
}
