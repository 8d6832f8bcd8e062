// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_write.h"

#include "parameter_files/vocabulary.h"
#include "parameter_files/write_places.h"
#include "sax/prepared_tags.h"

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

/// The format of machine parameters files for WritePlaces.
class MachineFormat {
public:
    explicit MachineFormat(KlvrProperties::WriteOptions const& options) : m_options(options) {}

    /// What has no profile list on its way to the top goes, and so does what the list holds beside profiles;
    /// a profile of a leaf's type keeps its value.
    bool IsLeftOut(FileWalk const& walk) const {
        bool const isOfProfileLists =
            walk.Kind() == PlaceKind::ProfileList || walk.Kind() == PlaceKind::Profile;
        return m_options.m_profileListsOnly && walk.Depth() != 0 && !isOfProfileLists;
    }

    /// The words of entries are the format's, also where the layout gives them another name, by which they
    /// are read.
    KelSAX::PreparedTag const& TagOf(FileWalk const& walk) {
        switch (walk.Kind()) {
        case PlaceKind::DefaultProfile:
            return Sax::TagOf(Word::Default, m_tags);
        case PlaceKind::Item:
            return Sax::TagOf(Word::Instance, m_tags);
        case PlaceKind::Profile:
            return Sax::TagOf(Word::Profile, m_tags);
        case PlaceKind::Group:
        case PlaceKind::Leaf:
        case PlaceKind::List:
        case PlaceKind::ProfileList:
            break;
        }
        return TagOf(walk.Layout());
    }

    bool IsPlain(LayoutNode const&) const { return !m_options.m_profileListsOnly; }

    static KelSAX::PreparedTag MakeTag(LayoutNode const& layout) {
        KelSAX::PreparedTag tag(Word::Property);
        tag.AddAttribute(Word::Name, std::wstring_view(layout.m_name));
        tag.AddAttribute(Word::Type, Word::WordOf(layout.m_type));
        if (layout.m_isProfileList) {
            tag.AddAttribute(Word::ProfileList, std::string_view());
        }
        return tag;
    }

    static bool MayHaveAttributes(FileWalk const& walk) { return walk.Kind() == PlaceKind::Profile; }

    static void WriteAttributes(FileWalk const& walk, KelSAX::ISAXWriter& writer) {
        if (walk.Depth() != 0 && walk.Kind() == PlaceKind::Profile) {
            writer.WriteAttribute(Word::Name, walk.Name());
        }
    }

private:
    KelSAX::PreparedTag const& TagOf(LayoutNode const& layout) {
        // By the node's address: the same tag is asked for in each entry of a list, and has to be escaped
        // once.
        return m_tags.Of(static_cast<void const*>(&layout), [&layout] { return MakeTag(layout); });
    }

    KlvrProperties::WriteOptions const& m_options;
    Sax::TagsByAddress m_tags;
};

} // namespace

bool ParameterNodeWriteKlvrProperties::Write(KelSAX::ISAXWriter& writer) const {
    MachineFormat format(*m_options);
    RepeatedProfiles const repeated = WritePlaces(m_node, format, writer);
    if (m_notes != nullptr) {
        *m_notes = repeated.Notes();
    }
    return true;
}
