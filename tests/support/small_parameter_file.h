// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

#include <memory>
#include <sstream>
#include <string>

namespace TestSupport {

using namespace Zantrel;

/// One node of each type, in a group and as lists, and the ways in which containers nest:
///
///     GenericParameters{I}            G{I D L B S O F P A X}
///     N  a list of integers           AS  a list of files
///     M  a list of groups {I N}       C  a profile list {I N C}, the inner C{S}
///     Z  both a list and a profile list {I}
class SmallLayout : public ParameterLayout {
public:
    SmallLayout() {
        m_name = L"Root";
        LayoutNode& editor = *m_profileEditor;
        AddInteger(*editor.AddNode(L"GenericParameters"));
        LayoutNode& group = *editor.AddNode(L"G");
        wchar_t const* const names[] = {nullptr, L"I", L"D", L"L", L"B", L"S", L"O", L"F", L"P", L"A", L"X"};
        for (std::int32_t type = Int; type <= StandardOptions; ++type) {
            group.AppendNode(MakeNode(names[type], static_cast<eTypeLayoutNode>(type)));
        }
        AddList(editor, L"N", Int);
        AddList(editor, L"AS", FileAttachment);
        LayoutNode& rows = *AddList(editor, L"M", Group);
        LayoutNode& profiles = *editor.AddNode(L"C")->SetProfile(true, L"Profile");
        for (LayoutNode* const node : {&rows, &profiles}) {
            AddInteger(*node);
            AddList(*node, L"N", Int);
        }
        profiles.AddNode(L"C")->SetProfile(true, L"Profile")->AddNode(L"S", String, L"s");
        AddInteger(*editor.AddNode(L"Z")->SetProfile(true, L"Both")->SetList(true, L"Both", L""));
    }

private:
    static void AddInteger(LayoutNode& group) { group.AddNode(L"I", Int, std::int32_t{1}); }
    static LayoutNode* AddList(LayoutNode& group, wchar_t const* name, eTypeLayoutNode type) {
        group.AppendNode(MakeNode(name, type)->SetList(true, L"Item", L""));
        return group.Back();
    }
};

/// A file that has something for each node of it.
inline constexpr char const* SmallFile =
    "<Root><GenericParameters Hidden='true'><I>7</I></GenericParameters>"
    "<G ReadOnly='true'><I>-8</I><D>1.5</D><L>2e-3</L><B>True</B><S Hidden='true'> a\xC3\xA4&lt;b "
    "</S><O>o</O><F>f</F>"
    "<P>/p</P><A><Name>n.bin</Name><Data>AP8=</Data></A><X>x</X></G>"
    "<N ReadOnly='true'><Item>1</Item><Item Hidden='true'>2</Item></N>"
    "<AS><Item><Name>m</Name><Data>AQID</Data></Item></AS>"
    "<M><Item ReadOnly='true'><I>3</I><N><Item>4</Item></N></Item></M>"
    "<C DisableAddRemove='true'><Default><I>5</I><N/><C><Default><S>t</S></Default></C></Default>"
    "<Profile Name='p &amp; q' NameReadOnly='true' CanBeDeleted='false' UserDefaultProfile='true'><I>6</I>"
    "<N><Item>9</Item></N><C><Default/><Profile Name='in'><S/></Profile></C></Profile></C>"
    "<Z><Default><I>1</I></Default><Both Name='b'><I>2</I></Both></Z></Root>";

inline bool ReadText(ParameterDatabase& database, std::string const& document, ReadReport* report = nullptr) {
    std::istringstream in(document);
    std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForReading(database));
    return KelAM::SaxUtilities::ReadStream(in, *handler, report);
}

/// The bytes of the file, or nothing where it can't be written.
inline std::string WriteText(ParameterDatabase const& database) {
    std::ostringstream out;
    return WriteStream(database, out) ? out.str() : std::string();
}

} // namespace TestSupport
