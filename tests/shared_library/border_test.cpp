// SPDX-License-Identifier: Apache-2.0
// What passes between a host and the library, each a module of its own: also built against the shared
// library.
#include <zantrel/zantrel.h>

#include "tests/support/comma_locale.h"

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <sstream>
#include <stdexcept>

TEST(Border, IsPassedByExceptionsOfTheLibraryAndOfTheHost) {
    struct Throwing : ISAXPersistHelper {
        bool HandleTag(std::string const&, KelSAX::ISAXReader&) override {
            throw std::domain_error("host's");
        }
        bool Write(KelSAX::ISAXWriter&) const override { throw std::domain_error("host's"); }
    } handler;
    std::istringstream in("<a/>");
    std::ostringstream out;
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "a";
    EXPECT_THROW(KelAM::SaxUtilities::ReadStream(in, handler), std::domain_error);
    EXPECT_THROW(KelAM::SaxUtilities::WriteStream(out, handler, options), std::domain_error);
    Zantrel::ParameterLayout const layout;
    Zantrel::ParameterDatabase database(&layout);
    EXPECT_THROW(database.GetProfileEditor().Get(L"none"), Zantrel::ParameterMisuse);
    EXPECT_EQ(std::uncaught_exceptions(), 0);
}

TEST(Border, LetsTheLibrarySeeTheGlobalLocaleOfTheHost) {
    Zantrel::LayoutNode const node(L"N", Zantrel::Double, nullptr);
    EXPECT_EQ(node.FormatValue(2.5).find(L','), std::wstring::npos);
    TestSupport::CommaLocale const locale;
    EXPECT_NE(node.FormatValue(2.5).find(L','), std::wstring::npos);
}

TEST(Border, IsPassedByPropertiesAlsoOfAHostsOwnClass) {
    struct Own : PersistentProperty<std::wstring> {
        using PersistentProperty<std::wstring>::PersistentProperty;
        Own* Clone() const override { return new Own(m_value); }
        std::wstring GetType() const override { return L"Own"; }
    };
    Zantrel::BuildTicket ticket(nullptr);
    PersistentProperties& bag = ticket.GetDefaults();
    bag.AddProperty(L"own", new Own(L"x"));
    bag.AddProperty(L"host's", new PersistentProperty<std::wstring>(L"x"));
    EXPECT_NE(bag.GetValuePointer<std::wstring>(L"host's", false), nullptr);
    PersistentProperties const copy(bag); // whose properties the library has made
    std::unique_ptr<IPersistentProperty> const taken(
        PersistentProperty<PersistentProperties>(copy).Clone()); // and the host ends
    ASSERT_NE(PropertyCast<PersistentProperties>(taken.get()), nullptr);
    EXPECT_TRUE(PropertyCast<PersistentProperties>(taken.get())->m_value == bag);
    EXPECT_EQ(PropertyCast<std::wstring>(taken.get()), nullptr);
    std::ostringstream out;
    ASSERT_TRUE(Zantrel::SaveBuildTicket(out, ticket, Zantrel::BuildTicketWriteOptions()));
    EXPECT_NE(out.str().find("Type=\"Own\""), std::string::npos) << out.str();
}

TEST(Border, TellsTheVersionOfTheLibraryThatWasLoaded) {
    EXPECT_STREQ(Zantrel::Version(), ZANTREL_VERSION_STRING);
}
