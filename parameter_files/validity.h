// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/parameter_files/parameter_file_validity.h>

#include <cstddef>
#include <string>
#include <utility>

/// What the handlers of one validity check find, shared by all of them.
class ParameterFileValidity {
public:
    explicit ParameterFileValidity(Zantrel::ParameterFileValidityOptions const& options)
        : m_maxDepth(options.m_maxDepth) {}

    std::size_t GetMaxDepth() const { return m_maxDepth; }
    Zantrel::ParameterFileValidityResult const& GetResult() const { return m_result; }

    void Report(std::wstring message) {
        Fail();
        m_result.m_messages.push_back(std::move(message));
    }

    void Fail() noexcept { m_result.m_isValid = false; }

private:
    std::size_t m_maxDepth;
    Zantrel::ParameterFileValidityResult m_result;
};
