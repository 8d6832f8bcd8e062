// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/prepared_tag.h>

#include <string_view>
#include <unordered_map>

namespace Zantrel {

/// The tags of a document's elements, each made when it is first asked for and good as long as this lives.
///
/// They are told apart by the address of what they are made from, a layout's node or one of its texts, which
/// must stay as it is. Elements come in nearly the same order again and again, so each tag remembers which
/// one followed it last, and that one is looked at before any is searched.
class PreparedTags {
public:
    PreparedTags() = default;
    PreparedTags(PreparedTags const&) = delete;
    PreparedTags& operator=(PreparedTags const&) = delete;

    /// The tag made from what stands at `source`, or that `make()` gives for it.
    template <class Make> KelSAX::PreparedTag const& Of(void const* source, Make const& make) {
        if (m_last->next == nullptr || m_last->next->source != source) {
            auto entry = m_entries.find(source);
            if (entry == m_entries.end()) {
                entry = m_entries.emplace(source, Entry{source, make()}).first;
            }
            m_last->next = &entry->second;
        }
        m_last = m_last->next;
        return m_last->tag;
    }

    /// The tag without attributes of a name, told by where its text stands.
    template <class Character> KelSAX::PreparedTag const& Of(std::basic_string_view<Character> name) {
        return Of(name.data(), [name] { return KelSAX::PreparedTag(name); });
    }

private:
    struct Entry {
        void const* source;
        KelSAX::PreparedTag tag;
        Entry* next = nullptr; ///< that was asked for after this one last; entries stay where they are
    };

    Entry m_beforeFirst{nullptr, KelSAX::PreparedTag(std::string_view())};
    Entry* m_last = &m_beforeFirst;
    std::unordered_map<void const*, Entry> m_entries;
};

} // namespace Zantrel
