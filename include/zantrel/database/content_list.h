// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Zantrel {

struct LayoutNode;
class PathIndex;

/// A flat index of the leaves below a cursor, sorted by a path that also leads through items and profiles. A
/// snapshot: leaves that are added later are not in it, and its pointers go stale with the bags they name.
///
/// A path is the names of the steps from below the cursor, joined by "_": a child's name; for an item the
/// list's entry name (m_nodeName) and "[index]", from 0; for a profile the entry name and "[name]"; for the
/// default profile the entry name and "::Default::". An item of the list "Ranges" has leaves such as
/// "Ranges_ListItem[0]_Begin". Nothing takes a path apart again, so names may hold "_".
///
/// A value like any other: copies are deep and name the same bags. A list that was moved from is empty.
struct ZANTREL_EXPORT ContentList {
    struct ZANTREL_EXPORT Node {
        /// What the value was when the list was made, by the type of the layout's node. Nothing for Int,
        /// FileAttachment and Group: read these through m_pProperties.
        union Value {
            double number;            ///< Double, Distance
            bool flag;                ///< Bool
            std::wstring const* text; ///< all texts: follows later writes, and dies with the bag
        };

        std::wstring m_path;
        LayoutNode const* m_pLayout = nullptr;         ///< borrowed from the layout
        PersistentProperties* m_pProperties = nullptr; ///< borrowed; holds the value as it is now
        Value m_value{};

        /// By path alone, by UTF-16 code unit, a prefix first.
        bool operator<(Node const& other) const { return *this < std::wstring_view(other.m_path); }
        bool operator<(std::wstring_view path) const noexcept;
        friend ZANTREL_EXPORT bool operator<(std::wstring_view path, Node const& node) noexcept;
    };

    /// An ordered set, unique by path, with the functions of std::set. A path can be looked up as it stands:
    /// `list.m_nodes.find(L"Laser_Power")`. The set that ParameterNode::Query keeps finds paths in constant
    /// time, until something is taken out of it; all others, and what is added later, by their order.
    class Nodes : private std::set<Node, std::less<>> {
        using Set = std::set<Node, std::less<>>;

    public:
        using Set::allocator_type;
        using Set::const_iterator;
        using Set::const_pointer;
        using Set::const_reference;
        using Set::const_reverse_iterator;
        using Set::difference_type;
        using Set::insert_return_type;
        using Set::iterator;
        using Set::key_compare;
        using Set::key_type;
        using Set::node_type;
        using Set::pointer;
        using Set::reference;
        using Set::reverse_iterator;
        using Set::size_type;
        using Set::value_compare;
        using Set::value_type;

        Nodes() = default;
        Nodes(std::set<Node, std::less<>> nodes) noexcept : Set(std::move(nodes)) {}
        Nodes(std::initializer_list<Node> nodes) : Set(nodes) {}
        Nodes(Nodes const& source) : Set(source) {}
        Nodes(Nodes&& source) noexcept { swap(source); } ///< leaves it empty
        Nodes& operator=(Nodes source) noexcept {
            swap(source);
            return *this;
        }
        ~Nodes() = default;

        using Set::begin;
        using Set::cbegin;
        using Set::cend;
        using Set::count;
        using Set::crbegin;
        using Set::crend;
        using Set::empty;
        using Set::end;
        using Set::equal_range;
        using Set::get_allocator;
        using Set::key_comp;
        using Set::lower_bound;
        using Set::max_size;
        using Set::rbegin;
        using Set::rend;
        using Set::size;
        using Set::upper_bound;
        using Set::value_comp;
        iterator find(Node const& node) const { return Find(node.m_path); }
        template <class Path> iterator find(Path const& path) const {
            if constexpr (std::is_convertible_v<Path const&, std::wstring_view>) {
                return Find(path);
            } else {
                return Set::find(path);
            }
        }
        template <class Path> bool contains(Path const& path) const { return find(path) != end(); }

        // What is added moves no other node, and none has its path.
        using Set::emplace;
        using Set::emplace_hint;
        using Set::insert;

        template <class... What> auto erase(What&&... what) {
            m_index.reset();
            return Set::erase(std::forward<What>(what)...);
        }
        template <class What> node_type extract(What&& what) {
            m_index.reset();
            return Set::extract(std::forward<What>(what));
        }
        void clear() noexcept {
            m_index.reset();
            Set::clear();
        }
        void merge(Nodes& source) {
            source.m_index.reset();
            Set::merge(static_cast<Set&>(source));
        }
        void merge(Nodes&& source) { merge(source); }
        void merge(std::set<Node, std::less<>>& source) { Set::merge(source); }
        void swap(Nodes& other) noexcept {
            Set::swap(other);
            m_index.swap(other.m_index);
        }

    private:
        friend struct ParameterNode;
        ZANTREL_EXPORT iterator Find(std::wstring_view path) const noexcept;

        std::shared_ptr<PathIndex const> m_index; ///< of nodes that are in the set, if there is one
    };

    Nodes m_nodes;

    ContentList();
    ContentList(ContentList const& source);
    ContentList(ContentList&& source) noexcept;
    ContentList& operator=(ContentList const& source);
    ContentList& operator=(ContentList&& source) noexcept;
    ~ContentList();
};

} // namespace Zantrel
