// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/parameter_node_write.h"

#include "parameter_files/vocabulary.h"
#include "parameter_files/write_places.h"
#include "sax/prepared_tags.h"
#include "store/bag_access.h"

#include <algorithm>
#include <limits>
#include <span>
#include <typeinfo>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

// A flag is written where it differs from what a reader would find without it, and not everywhere where it is
// read: each kind of place has its own row of flags below, and the reader has rows of its own. The
// differences are part of the format.

namespace {

bool IsEntry(PlaceKind kind) {
    return kind == PlaceKind::Item || kind == PlaceKind::DefaultProfile || kind == PlaceKind::Profile;
}

/// The generic format for WritePlaces. The filter reaches into groups and profiles; what stands in an item or
/// a default profile is written as if there were none, so the outermost of these that the walk is in is kept.
class GenericFormat {
public:
    explicit GenericFormat(ParameterDatabaseIOFiltering const& filtering) : m_filtering(filtering) {}

    bool IsLeftOut(FileWalk const& walk) {
        if (walk.Depth() <= m_unfilteredBelow) {
            m_unfilteredBelow = Nowhere;
        }
        bool const isFiltered = m_unfilteredBelow == Nowhere;
        PlaceKind const kind = walk.Kind();
        if (isFiltered && (kind == PlaceKind::Item || kind == PlaceKind::DefaultProfile)) {
            m_unfilteredBelow = walk.Depth();
        }
        if (kind == PlaceKind::DefaultProfile) {
            return isFiltered && !m_filtering.m_exportDefaultParameters;
        }
        // Hidden ones are left out whatever the filter says: the reader hides what is missing.
        bool const isGeneral = walk.Depth() != 0 && !IsEntry(kind) && walk.Name() == Word::GenericParameters;
        return isGeneral &&
               ((isFiltered && !m_filtering.m_exportGeneralParameters) || walk.Node().GetHidden());
    }

    KelSAX::PreparedTag const& TagOf(FileWalk const& walk) {
        if (walk.Kind() == PlaceKind::DefaultProfile) {
            return Sax::TagOf(Word::Default, m_tags);
        }
        return Sax::TagOf(IsEntry(walk.Kind()) ? std::wstring_view(walk.Layout().m_nodeName) : walk.Name(),
                          m_tags);
    }

    static bool IsPlain(LayoutNode const& child) { return child.m_name != Word::GenericParameters; }
    static KelSAX::PreparedTag MakeTag(LayoutNode const& child) {
        return KelSAX::PreparedTag(std::wstring_view(child.m_name));
    }

    static bool MayHaveAttributes(FileWalk const& walk) {
        return walk.Kind() == PlaceKind::Profile || !FlagsOf(walk).empty();
    }

    static void WriteAttributes(FileWalk const& walk, KelSAX::ISAXWriter& writer) {
        if (walk.Kind() == PlaceKind::Profile) {
            writer.WriteAttribute(Word::Name, walk.Name());
        }
        std::span<FlagAttribute const> const flags = FlagsOf(walk);
        // Whether a bag has flags is worth asking first only where there are several to look for.
        bool const isAnySet = flags.size() == 1 || HasFlags(walk.Node());
        for (FlagAttribute const& flag : flags) {
            bool const isSet = isAnySet && (walk.Node().*flag.get)();
            if (isSet != flag.ordinary) {
                writer.WriteAttribute(flag.word, std::string_view(isSet ? "true" : "false"));
            }
        }
    }

private:
    static constexpr std::size_t Nowhere = std::numeric_limits<std::size_t>::max();
    // Of a profile list ReadOnly and Hidden are read and never written, of a list DisableAddRemove.
    static constexpr FlagAttribute ContainerFlags[] = {Flag::DisableAddRemove};
    static constexpr FlagAttribute OrdinaryFlags[] = {Flag::ReadOnly, Flag::Hidden};
    static constexpr FlagAttribute ProfileFlags[] = {Flag::ReadOnly, Flag::Hidden, Flag::NameReadOnly,
                                                     Flag::CanBeDeleted, Flag::UserDefaultProfile};

    /// Most places have no flag at all, which one look tells.
    static bool HasFlags(ParameterNode const& node) {
        return node.IsValid() && !BagAccess::HoldsBagsOnly(*node.m_pProperties);
    }

    static std::span<FlagAttribute const> FlagsOf(FileWalk const& walk) {
        PlaceKind const kind = walk.Kind();
        if (kind == PlaceKind::ProfileList) {
            return ContainerFlags;
        }
        if ((kind == PlaceKind::Leaf || kind == PlaceKind::Item) && FindSoleValue(walk.Node()) != nullptr) {
            return {};
        }
        bool const isProfile = kind == PlaceKind::Profile || kind == PlaceKind::DefaultProfile;
        return isProfile ? std::span<FlagAttribute const>(ProfileFlags) : OrdinaryFlags;
    }

    ParameterDatabaseIOFiltering const& m_filtering;
    std::size_t m_unfilteredBelow = Nowhere; ///< the depth of that place
    Sax::TagsByAddress m_tags;
};

} // namespace

bool ParameterNodeWrite::Write(KelSAX::ISAXWriter& writer) const {
    GenericFormat format(m_filtering);
    RepeatedProfiles const repeated = WritePlaces(m_node, format, writer);
    if (m_notes != nullptr) {
        *m_notes = repeated.Notes();
    }
    return true;
}
