#pragma once

#include "platform/db/Status.h"

#include <string>

/// A text that is wiped when it goes.
class CSecret
{
public:
    CSecret() = default;
    ~CSecret();
    CSecret(CSecret const&) = delete;
    CSecret& operator=(CSecret const&) = delete;

    /// Makes room once, so that growing leaves no copies behind.
    void Reserve(std::size_t bytes) { m_strText.reserve(bytes); }
    std::string& Text() { return m_strText; }
    std::string const& Text() const { return m_strText; }

private:
    std::string m_strText;
};

/// Takes a new administration password from the first line of a file or, when no file is named,
/// from the terminal, where it is asked for twice and not shown.
CDbStatus GetPassword(std::string const& file, CSecret& password);
