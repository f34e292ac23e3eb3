#pragma once

/// The wait cursor while it lives. Guards may nest: the cursor goes away with the outermost one.
class CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(CWaitCursor const&) = delete;
    CWaitCursor& operator=(CWaitCursor const&) = delete;
};

/// Puts the wait cursor away while it lives, however many guards want it, and brings it back
/// afterwards. Whatever asks the user something in the middle of an operation holds one.
class CWaitCursorPause
{
public:
    CWaitCursorPause();
    ~CWaitCursorPause();
    CWaitCursorPause(CWaitCursorPause const&) = delete;
    CWaitCursorPause& operator=(CWaitCursorPause const&) = delete;

private:
    int const m_nWaiting; ///< guards that were in force when the pause began
};
