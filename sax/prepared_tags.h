// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/prepared_tag.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Zantrel::Sax {

/// The tags of a document's elements, each made when it is first asked for, under a key that says what it is
/// made from.
///
/// Elements come in nearly the same order again and again, so each tag remembers which one followed it last,
/// and that one is looked at before any is searched. Where there are more than `limit`, all are forgotten and
/// made anew.
template <class Key, class Hash = std::hash<Key>, class Equal = std::equal_to<Key>> class PreparedTags {
public:
    explicit PreparedTags(std::size_t limit = std::numeric_limits<std::size_t>::max()) : m_limit(limit) {}
    PreparedTags(PreparedTags const&) = delete;
    PreparedTags& operator=(PreparedTags const&) = delete;

    /// The tag that `make()` gave, or now gives, for a key like this one. Good until the next call, and where
    /// nothing is ever forgotten as long as these tags.
    template <class Like, class Make> KelSAX::PreparedTag const& Of(Like const& key, Make const& make) {
        Entry* const next = m_last->second.next;
        if (next != nullptr && Equal()(next->first, key)) {
            m_last = next;
        } else {
            Follow(Find(key, make));
        }
        return m_last->second.tag;
    }

private:
    struct Tag;
    using Entry = std::pair<Key const, Tag>;

    struct Tag {
        KelSAX::PreparedTag tag;
        Entry* next = nullptr; ///< that was asked for after this one last; entries stay where they are
    };

    void Follow(Entry& entry) noexcept {
        m_last->second.next = &entry;
        m_last = &entry;
    }

    template <class Like, class Make> Entry& Find(Like const& key, Make const& make) {
        auto entry = m_entries.find(key);
        if (entry == m_entries.end()) {
            if (m_entries.size() >= m_limit) {
                m_last = &m_beforeFirst;
                m_beforeFirst.second.next = nullptr;
                m_entries.clear();
            }
            entry = m_entries.emplace(Key(key), Tag{make()}).first;
        }
        return *entry;
    }

    std::size_t m_limit;
    Entry m_beforeFirst{Key(), Tag{KelSAX::PreparedTag(std::string_view())}};
    Entry* m_last = &m_beforeFirst;
    std::unordered_map<Key, Tag, Hash, Equal> m_entries;
};

/// Of what stays where it is while the document is written: told apart by its address.
using TagsByAddress = PreparedTags<void const*>;

/// The tag without attributes of a name, told by where its text stands.
template <class Character>
KelSAX::PreparedTag const& TagOf(std::basic_string_view<Character> name, TagsByAddress& tags) {
    return tags.Of(static_cast<void const*>(name.data()), [name] { return KelSAX::PreparedTag(name); });
}

} // namespace Zantrel::Sax
