// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Zantrel {

struct ContentList;
struct LayoutNode;

/// A cursor: one node of the layout paired with the bag that holds its content. Everyone reads and writes the
/// values of a database through cursors. The items of a list and the profiles of a profile list have no
/// layout nodes of their own: they are further bags for the same node.
///
/// A cursor is a small value that owns nothing but its share of the index that Query keeps. It goes stale
/// without notice when its bag goes: by Clear of the container, by assignment to a bag above it, or with the
/// database. A database and its cursors belong to one thread at a time, also for reading, because looking up
/// writes.
///
/// Misuse throws ParameterMisuse, which is a std::runtime_error, with the texts given below, and leaves the
/// bags as they were. Where memory runs out, std::bad_alloc passes through, and a list has a new item whole
/// or not at all.
struct ZANTREL_EXPORT ParameterNode {
    LayoutNode const* m_pNode = nullptr;           ///< borrowed from the layout
    PersistentProperties* m_pProperties = nullptr; ///< borrowed; null: no content here
    bool m_isContainer = false;                    ///< on a list or profile list as a whole, not on one item
    PersistentProperties* m_pParentProperties =
        nullptr; ///< borrowed; the bag that holds this one, where it is known
    /// What Query keeps, shared with copies of this cursor made after its first call; null before. Goes on
    /// naming the bags of that time.
    mutable std::shared_ptr<ContentList> m_contentList;

    /// Whether there is content. A cursor on a layout node without a bag is invalid.
    bool IsValid() const { return m_pProperties != nullptr; }

    /// The cursor on `node`, which lies below this node, any number of levels down. Groups only are passed on
    /// the way: to go below a list or profile list, take GetListNode, GetProfile or GetDefault first. Content
    /// that is missing gives an invalid cursor on `node`; a node outside of this subtree, or an invalid
    /// cursor, gives an invalid cursor on nothing. Throws "invalid query path, no such node" for this
    /// cursor's own node.
    ParameterNode Get(LayoutNode const* node) const;
    /// The same for a direct child by name. Throws "invalid query, no such node" when the layout has no such
    /// child.
    ParameterNode Get(wchar_t const* name) const;
    ParameterNode Get(std::wstring const& name) const { return Get(name.c_str()); }

    /// As Get, but null where Get gives an invalid cursor on nothing, and when content is missing above the
    /// last level. A direct child without content still gives a cursor, one that is not valid.
    std::unique_ptr<ParameterNode> GetParameterNodeIfExists(LayoutNode const* node) const;
    std::unique_ptr<ParameterNode> GetParameterNodeIfExists(wchar_t const* name) const;

    /// Replaces `list` by the index of all leaves below this cursor, which stands on a group, or on an item
    /// or profile of a group's type; elsewhere `list` comes back empty. Throws as GetValue at a leaf that
    /// lacks its value, as one of type StandardOptions does until it is set ("Invalid type cast : use
    /// std::string_t"); `list` then holds what had been found.
    void CreateContentList(ContentList& list) const;
    /// The leaf of that path (see ContentList), found in an index that this cursor makes at the first call
    /// and keeps with its copies: leaves added later are found by a fresh cursor only. Invalid when there is
    /// none, and for null. Throws as CreateContentList at the first call, and after that finds what had been
    /// indexed. Not on two threads at once, also for a const cursor.
    ParameterNode Query(wchar_t const* path) const;

    /// Whether both have equal content, flags among it as ParameterDatabase::IsEqual has them; the nodes may
    /// differ.
    bool IsEqual(ParameterNode const& other) const;

    /// Flags of any node, false until set. An invalid cursor has none; setting one there throws "the cursor
    /// has no content".
    bool GetReadOnly() const;
    void SetReadOnly(bool value);
    bool GetHidden() const;
    void SetHidden(bool value);

    /// The value, by the type that the layout gives it: std::int32_t for Int, double for Double and Distance,
    /// bool for Bool, KelAM::FileContent for FileAttachment, std::wstring for all others. Good until the next
    /// write to this value. Throws "Invalid type cast : use long" (or double, std::string_t,
    /// KelAM::FileContent, bool, after the T asked for) when the node is of another type or has no such
    /// value.
    template <class T> T const& GetValue() const {
        CheckValueType<T>();
        return _GetReference<T>();
    }
    /// The same, or null where GetValue throws.
    template <class T> T const* FindValue() const {
        CheckValueType<T>();
        return _FindReference<T>();
    }
    /// Writes the value, with the same checks. Creates nothing. For a text also from a `wchar_t const*`,
    /// where null counts as empty.
    template <class T> void SetValue(T const& value) {
        if constexpr (std::is_convertible_v<T const&, wchar_t const*> && !std::is_null_pointer_v<T>) {
            wchar_t const* const text = value;
            _GetReference<std::wstring>() = text != nullptr ? text : L"";
        } else if constexpr (CheckValueType<T>()) {
            _GetReference<T>() = value;
        }
    }
    /// Sets the value from a text, by the node's type, and creates it where it is missing. A flag is true for
    /// "true" in any case and false for every other text; a number that doesn't parse is 0 (see
    /// LayoutNode::GetValue). On a Distance the text is kept beside the number and the number stays: write it
    /// with SetValue<double>.
    void SetValueFromText(std::wstring const& text);

    // Lists and profile lists. The preconditions differ on purpose: some ask the layout node, and so hold on
    // an item too, others ask m_isContainer.

    /// Appends an item: a copy of the list's template, or with `copyDefault` false the layout's defaults.
    /// Throws "AddListNode requires list-container node".
    ParameterNode AddListNode(bool copyDefault) const;
    /// Adds a profile: a copy of the default profile, or with `copyDefault` false the layout's defaults. A
    /// name that is in use gets a second entry, and lookups keep finding the first. Throws "Not possible to
    /// add a profile to a non-profile-list node"; with `copyDefault` on a profile instead of the list,
    /// "GetDefault requires container node" after the adding.
    ParameterNode AddProfile(wchar_t const* name, bool copyDefault);
    /// The item at `index`, from 0; the number is taken as 32 bits. Throws "GetListNode requires
    /// list-container node", and std::out_of_range past the end.
    ParameterNode GetListNode(unsigned long long index) const;
    /// The first profile of this name, null for the default profile; invalid when there is none.
    /// Throws "GetProfile requires profile or category container node".
    ParameterNode GetProfile(wchar_t const* name) const;
    /// Whether there is such a profile; "::DefaultProfile::" is one here. Throws as GetProfile, with its
    /// message.
    bool HasProfile(wchar_t const* name) const;
    /// Replaces `names` by the names of all profiles but the default one, by UTF-16 code unit; a name in use
    /// twice comes twice. Throws "GetProfiles requires profile or category container node".
    void GetProfiles(std::vector<std::wstring>& names) const;
    /// The template item or the default profile. Throws "GetDefault requires container node".
    ParameterNode GetDefault() const;
    /// The number of items, or of profiles without the default one. Throws "GetSize requires container node".
    unsigned long long GetSize() const;
    /// Ends all items, or all profiles but the default one. Throws "GetSize requires container node".
    void Clear();

    /// Flags of a profile, false until set. Throw "GetNameReadOnly requires profile node" and so on anywhere
    /// else.
    bool GetNameReadOnly() const;
    void SetNameReadOnly(bool value);
    bool GetCanBeDeleted() const;
    void SetCanBeDeleted(bool value);
    bool GetUserDefaultProfile() const;
    void SetUserDefaultProfile(bool value);
    /// A flag of lists and profile lists. Throws "GetDisableAddRemove requires profile or category container
    /// node".
    bool GetDisableAddRemove() const;
    void SetDisableAddRemove(bool value);

    /// Adds the content that the layout gives m_pNode to m_pParentProperties, which both must be set, and
    /// goes to it. Content that stands there under the name already stays in front, and lookups go on finding
    /// it.
    void Format();

protected:
    /// The value itself, with the checks of GetValue.
    template <class T> T& _GetReference() const;
    /// The same, or null where that throws.
    template <class T> T* _FindReference() const;
    /// For numbers a typed write; for std::wstring SetValueFromText.
    template <class T> void _SetValue(T const& value);
    /// Fills m_pProperties by the type of m_pNode.
    void _FormatContent();
    /// Adds the leaves to `list`; for null, to a new one in m_contentList.
    void _CreateContentList(ContentList* list) const;
    /// Adds the leaves to `list`, with paths that begin with `prefix`.
    void _AddToMap(ContentList& list, std::wstring const& prefix) const;

private:
    friend struct ValueAccess;

    /// Compiles for the types of values only, and says which to take instead of those that look like one.
    template <class T> static constexpr bool CheckValueType() {
        constexpr bool isValue = std::is_same_v<T, std::int32_t> || std::is_same_v<T, double> ||
                                 std::is_same_v<T, bool> || std::is_same_v<T, std::wstring> ||
                                 std::is_same_v<T, KelAM::FileContent>;
        constexpr bool isInteger = std::is_integral_v<T> || std::is_enum_v<T>;
        constexpr bool isReal = std::is_floating_point_v<T>;
        constexpr bool isNarrow =
            std::is_convertible_v<T const&, char const*> || std::is_convertible_v<T const&, std::string>;
        constexpr bool isWide = std::is_convertible_v<T const&, std::wstring_view>;
        constexpr bool isNull = std::is_null_pointer_v<T>;
        static_assert(isValue || !isInteger, "an integer parameter is a std::int32_t on every platform: "
                                             "use std::int32_t, not long or any other integer");
        static_assert(isValue || !isReal, "a real parameter is a double: use double, not float");
        static_assert(isValue || isNull || !isNarrow,
                      "a text parameter is wide: use std::wstring or a literal with L, not a narrow text");
        static_assert(isValue || isNull || isNarrow || !isWide,
                      "a text parameter is a std::wstring: use that, not a pointer to it or a view of it");
        static_assert(isValue || isInteger || isReal || (!isNull && (isNarrow || isWide)),
                      "a value is a std::int32_t, double, bool, std::wstring or KelAM::FileContent");
        return isValue;
    }
};

} // namespace Zantrel
