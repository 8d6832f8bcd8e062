// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_write.h"

#include "parameter_files/vocabulary.h"
#include "parameter_files/write_places.h"

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
    void WriteStart(FileWalk const& walk, OpenElements& elements, KelSAX::ISAXWriter& writer) const {
        if (walk.Depth() == 0) {
            return;
        }
        switch (walk.Kind()) {
        case PlaceKind::DefaultProfile:
            elements.Open(Word::Default);
            return;
        case PlaceKind::Item:
            elements.Open(Word::Instance);
            return;
        case PlaceKind::Profile:
            elements.Open(Word::Profile);
            writer.WriteAttribute(Word::Name, walk.Name());
            return;
        case PlaceKind::Group:
        case PlaceKind::Leaf:
        case PlaceKind::List:
        case PlaceKind::ProfileList:
            elements.Open(Word::Property);
            writer.WriteAttribute(Word::Name, walk.Name());
            writer.WriteAttribute(Word::Type, Word::WordOf(walk.Layout().m_type));
            if (walk.Layout().m_isProfileList) {
                writer.WriteAttribute(Word::ProfileList, std::string_view());
            }
            return;
        }
    }

private:
    KlvrProperties::WriteOptions const& m_options;
};

} // namespace

bool ParameterNodeWriteKlvrProperties::Write(KelSAX::ISAXWriter& writer) const {
    MachineFormat format(*m_options);
    WritePlaces(m_node, format, writer);
    return true;
}
