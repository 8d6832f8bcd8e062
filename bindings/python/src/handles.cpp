// SPDX-License-Identifier: Apache-2.0
#include "handles.h"

#include "node.h"

#include <stdexcept>
#include <utility>

namespace ZantrelPython {

// The translations stand before the layout, which borrows them, and so end after it.
LayoutHandle::LayoutHandle(std::unique_ptr<Zantrel::ParameterLayout> layout) : m_layout(std::move(layout)) {
    m_layout->SetResourceDictionary(&m_translations);
}

// Databases keep bags that are laid out by the layout's nodes, and threads walk over these without a lock.
Zantrel::ParameterLayout& LayoutHandle::Change() {
    if (m_uses != 0) {
        throw std::runtime_error(
            "the layout is in use and can't be changed: databases stand on it, or another "
            "thread works with it; copy.deepcopy(layout) gives one that can");
    }
    return *m_layout;
}

// No node is left by now, as each holds the database, and no other thread can come to it any more.
DatabaseHandle::~DatabaseHandle() {
    Unlocked const unlocked;
    m_database.reset();
}

// Exchanged and not assigned, so that nothing fails half-way; the old values end with `other`. Cursors lead
// into those, and so the count goes up before anyone asks for one.
void DatabaseHandle::TakeOver(DatabaseHandle& other) {
    static_cast<void>(Get());
    m_database.swap(other.m_database);
    m_notes = other.m_notes;
    m_path = other.m_path;
    m_format = other.m_format;
    ++m_changes;
    if (m_root != nullptr) {
        m_root->EntriesReplaced();
    }
}

// Refused and not waited for: the thread that has it may be waiting for the interpreter's lock, which the one
// that asks holds.
Zantrel::ParameterDatabase& DatabaseHandle::Get() {
    if (m_isBusy) {
        throw std::runtime_error(
            "another thread or call works with this database, which belongs to one at a time");
    }
    return *m_database;
}

} // namespace ZantrelPython
