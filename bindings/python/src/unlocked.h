// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pybind11/pybind11.h>

#include <chrono>
#include <thread>

namespace ZantrelPython {

/// Gives the interpreter's lock away for a while.
class Unlocked {
public:
    Unlocked() : m_state(PyEval_SaveThread()) {}
    Unlocked(Unlocked const&) = delete;
    Unlocked& operator=(Unlocked const&) = delete;
    /// A daemon thread that asks for the lock when the interpreter has ended doesn't get it, but is ended
    /// itself where it stands, by unwinding its stack. That would end the process in a destructor, and
    /// objects of Python without the lock. So it stays here, as such threads do in later versions of Python.
    ~Unlocked() {
        try {
            PyEval_RestoreThread(m_state);
        } catch (...) {
            for (;;) {
                std::this_thread::sleep_for(std::chrono::hours(1));
            }
        }
    }

private:
    PyThreadState* m_state;
};

} // namespace ZantrelPython
