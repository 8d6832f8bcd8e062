// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "texts.h"
#include "unlocked.h"

#include <zantrel/database/parameter_database.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/layout/resource_dictionary.h>
#include <zantrel/sax/read_report.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZantrelPython {

class Node;

// What Python holds on to. The library's objects borrow from each other and belong to one thread at a time;
// here each keeps alive what it borrows, and refuses what another thread would disturb. All counts and marks
// are read and written under the interpreter's lock alone. A refusal never waits, so that neither threads nor
// a child that was forked while a thread was at work can hang.

/// A layout with its translations.
class LayoutHandle {
public:
    explicit LayoutHandle(std::unique_ptr<Zantrel::ParameterLayout> layout);

    Zantrel::ParameterLayout const& Get() const { return *m_layout; }
    /// To change it. RuntimeError while a database stands on it or a thread works with it.
    Zantrel::ParameterLayout& Change();

    py::list m_notes;            ///< of the read that it came from
    std::wstring m_path;         ///< of its file; empty where there is none
    bool m_isOfTemplate = false; ///< whose root says nothing of that of parameter files

private:
    friend class LayoutUse;

    Zantrel::ResourceDictionary m_translations;
    std::unique_ptr<Zantrel::ParameterLayout> m_layout;
    std::size_t m_uses = 0;
};

/// Keeps a layout alive and as it is.
class LayoutUse {
public:
    explicit LayoutUse(std::shared_ptr<LayoutHandle> layout) : m_layout(std::move(layout)) {
        ++m_layout->m_uses;
    }
    LayoutUse(LayoutUse const&) = delete;
    LayoutUse& operator=(LayoutUse const&) = delete;
    ~LayoutUse() { --m_layout->m_uses; }

    std::shared_ptr<LayoutHandle> const& Handle() const { return m_layout; }
    Zantrel::ParameterLayout const& operator*() const { return m_layout->Get(); }

private:
    std::shared_ptr<LayoutHandle> m_layout;
};

/// A database with the layout that it stands on.
class DatabaseHandle {
public:
    explicit DatabaseHandle(std::shared_ptr<LayoutHandle> layout) : m_layout(std::move(layout)) {}
    DatabaseHandle(DatabaseHandle const&) = delete;
    DatabaseHandle& operator=(DatabaseHandle const&) = delete;
    /// Ends the values without the interpreter's lock, which takes a fifth of the time that reading them
    /// took.
    ~DatabaseHandle();

    /// Makes the database; also without the interpreter's lock, before anyone else knows the handle.
    void Fill() { m_database = std::make_unique<Zantrel::ParameterDatabase>(&*m_layout); }
    void Fill(Zantrel::ParameterDatabase const& source) {
        m_database = std::make_unique<Zantrel::ParameterDatabase>(source);
    }
    /// Exchanges the values, and takes over where they come from; the nodes' entries have gone with the old
    /// ones.
    void TakeOver(DatabaseHandle& other);

    std::shared_ptr<LayoutHandle> const& Layout() const { return m_layout.Handle(); }
    /// RuntimeError while another thread works with it.
    Zantrel::ParameterDatabase& Get();

    std::uint64_t m_changes = 1;        ///< counts what can end cursors; see Node
    Node* m_root = nullptr;             ///< lives while Python, or a node below, holds it
    py::list m_notes;                   ///< of the reads into it
    std::wstring m_path;                ///< of the file last read
    std::wstring m_format = L"generic"; ///< of that file

private:
    friend class Busy;

    LayoutUse m_layout;
    std::unique_ptr<Zantrel::ParameterDatabase> m_database;
    bool m_isBusy = false;
};

/// Takes a database for one call that goes on without the interpreter's lock.
class Busy {
public:
    explicit Busy(DatabaseHandle& database) : m_handle(database), m_database(database.Get()) {
        m_handle.m_isBusy = true;
    }
    Busy(Busy const&) = delete;
    Busy& operator=(Busy const&) = delete;
    ~Busy() { m_handle.m_isBusy = false; }

    Zantrel::ParameterDatabase& operator*() const { return m_database; }

private:
    DatabaseHandle& m_handle;
    Zantrel::ParameterDatabase& m_database;
};

} // namespace ZantrelPython
