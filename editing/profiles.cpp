// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/profiles.h>

#include "editing/default_profile.h"
#include "editing/entries.h"
#include "editing/findings.h"
#include "editing/place_flags.h"
#include "editing/references.h"
#include "editing/xml_text.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

// An operation asks everything first, then does what may run out of memory, and then what can't: the place of
// the new entry is made before the entry, copies before they are added, and what ends comes last. So a
// refusal or std::bad_alloc leaves the database as it was.

namespace Zantrel::Editing {

namespace {

using BagProperty = PersistentProperty<PersistentProperties>;

/// Not what bags keep something else by, nor what choices or paths mean the default profile by.
bool IsProfileName(std::wstring_view name) {
    bool const isFlag = std::any_of(std::begin(PlaceFlags), std::end(PlaceFlags),
                                    [&](PlaceFlag const& flag) { return flag.word == name; });
    bool const isForDefault = MeansDefaultProfile(name) || name == DefaultProfileStep;
    return !name.empty() && name != L"Value" && !isFlag && !isForDefault && IsXmlText(name);
}

PersistentProperties& BagOf(Place const& place) { return *place.GetCursor().m_pProperties; }

/// The first profile of a name, or null.
BagProperty* FindProfile(Place const& list, std::wstring_view name) {
    // Flags stand in the same bag as profiles, but are no bags themselves.
    auto* const property = PropertyCast<PersistentProperties>(BagOf(list).FindProperty(name));
    bool const isProfile = property != nullptr && !property->IsDeleted() && name != DefaultProfileName;
    return isProfile ? property : nullptr;
}

std::optional<Finding> AgainstProfile(Place const& list, std::wstring const& name) {
    return FindProfile(list, name) != nullptr
               ? std::nullopt
               : std::optional(
                     MakeFinding(FindingKind::NoSuchProfile, list, name, list.GetLayoutNode()->m_name));
}

std::optional<Finding> AgainstNewName(Place const& list, std::wstring const& name) {
    if (!IsProfileName(name)) {
        return MakeFinding(FindingKind::BadName, list, name);
    }
    return BagOf(list).FindProperty(name) == nullptr
               ? std::nullopt
               : std::optional(MakeFinding(FindingKind::NameInUse, list, name, list.GetPath()));
}

/// Where a flag of the profile forbids it to a user.
std::optional<Finding> AgainstRenaming(Place const& list, std::wstring const& name) {
    auto finding = AgainstChanging(list);
    if (!finding && CursorOn(list, &FindProfile(list, name)->m_value).GetNameReadOnly()) {
        finding = NotAllowed(list.GetProfile(name), L"the profile's name is read-only.");
    }
    return finding;
}

std::optional<Finding> AgainstRemovingProfile(Place const& list, std::wstring const& name) {
    return CursorOn(list, &FindProfile(list, name)->m_value).GetCanBeDeleted()
               ? std::nullopt
               : std::optional(NotAllowed(list.GetProfile(name), L"the profile can't be deleted."));
}

/// Of choices that had no profile: that they have one again.
void TellAsTakenAlong(std::vector<Finding>& findings, std::wstring const& newName) {
    for (Finding& finding : findings) {
        finding.severity = Severity::Note;
        finding.sentence =
            L"The choice of the profile " + Quoted(finding.value) + L" is now " + Quoted(newName) + L'.';
    }
}

/// Takes away what bound the model of a new profile alone.
void Unbind(ParameterNode profile) {
    for (PlaceFlag const& flag : PlaceFlags) {
        if (IsSet(profile, flag)) {
            (profile.*flag.set)(false);
        }
    }
    profile.SetCanBeDeleted(true);
}

/// Takes the newest entry of a name out of a bag again, unless all went well. The name has no other one.
class Addition {
public:
    Addition(PersistentProperties& bag, std::wstring const& name) : m_bag(bag), m_name(name) {}
    Addition(Addition const&) = delete;
    Addition& operator=(Addition const&) = delete;
    ~Addition() {
        if (!m_isKept) {
            m_bag.RemoveProperty(m_name, true); // allocates nothing
        }
    }
    void Keep() noexcept { m_isKept = true; }

private:
    PersistentProperties& m_bag;
    std::wstring const& m_name;
    bool m_isKept = false;
};

} // namespace

EntryChange AddProfile(Place const& list, std::wstring const& name) {
    EntryChange change;
    change.finding = FirstOf([&] { return AgainstKind(list, PlaceKind::ProfileList); },
                             [&] { return AgainstAdding(list); }, [&] { return AgainstNewName(list, name); });
    if (change) {
        change.entry = EntryPlace::OfProfile(list, name);
        ParameterNode cursor = list.GetCursor();
        ParameterNode const profile = cursor.AddProfile(name.c_str(), true);
        // From here on the profile stands, and a flag may need memory.
        Addition addition(BagOf(list), name);
        Unbind(profile);
        addition.Keep();
        EntryPlace::SetBag(*change.entry, *profile.m_pProperties);
    }
    return change;
}

EntryChange DuplicateProfile(Place const& list, std::wstring const& source, std::wstring const& name) {
    EntryChange change;
    change.finding = FirstOf([&] { return AgainstKind(list, PlaceKind::ProfileList); },
                             [&] { return AgainstProfile(list, source); },
                             [&] { return AgainstAdding(list); }, [&] { return AgainstNewName(list, name); });
    if (change) {
        change.entry = EntryPlace::OfProfile(list, name);
        // Complete before it is added, and so without an Addition to take it back.
        auto copy = std::make_unique<BagProperty>(FindProfile(list, source)->m_value);
        EntryPlace::SetBag(*change.entry, copy->m_value);
        Unbind(change.entry->GetCursor());
        BagOf(list).AddProperty(name, copy.release());
    }
    return change;
}

// While it works the profile stands under both names: what can fail comes first, and then nothing does.
// Choices within the profile are those of its copy, which stays.
EntryChange RenameProfile(Place const& list, std::wstring const& name, std::wstring const& newName) {
    // Copies, as either may be the value of a choice that changes.
    std::wstring const oldName = name, laterName = newName;
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::ProfileList); },
                [&] { return AgainstProfile(list, oldName); }, [&] { return AgainstRenaming(list, oldName); },
                [&] { return laterName == oldName ? std::nullopt : AgainstNewName(list, laterName); });
    if (!change) {
        return change;
    }
    change.entry = EntryPlace::OfProfile(list, laterName);
    BagProperty& profile = *FindProfile(list, oldName);
    if (laterName == oldName) {
        EntryPlace::SetBag(*change.entry, profile.m_value);
        return change;
    }
    auto* const renamed = new BagProperty(profile);
    EntryPlace::SetBag(*change.entry, renamed->m_value);
    BagOf(list).AddProperty(laterName, renamed);
    Addition addition(BagOf(list), laterName);
    References references = ReferencesTo(list, oldName, &profile.m_value);
    std::vector<std::wstring> values(references.values.size(), laterName);
    TellAsTakenAlong(references.findings, laterName);
    addition.Keep();
    // Nothing fails any more: texts are exchanged and not copied.
    for (std::size_t i = 0; i < values.size(); ++i) {
        references.values[i]->swap(values[i]);
    }
    BagOf(list).RemoveProperty(oldName, true);
    change.references = std::move(references.findings);
    return change;
}

EntryChange RemoveProfile(Place const& list, std::wstring const& name) {
    std::wstring const goneName = name; // which may end with the profile
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::ProfileList); },
                [&] { return AgainstProfile(list, goneName); }, [&] { return AgainstRemoving(list); },
                [&] { return AgainstRemovingProfile(list, goneName); });
    if (change) {
        BagProperty const& profile = *FindProfile(list, goneName);
        // Before the profile goes, since finding them may fail.
        change.references = ReferencesTo(list, goneName, &profile.m_value).findings;
        BagOf(list).RemoveProperty(goneName, true);
        bool const isFoundAgain = FindProfile(list, goneName) != nullptr || MeansDefaultProfile(goneName);
        if (isFoundAgain) {
            change.references.clear();
        }
    }
    return change;
}

} // namespace Zantrel::Editing
