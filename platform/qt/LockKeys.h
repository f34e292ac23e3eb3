#pragma once

#include <cstdint>

/// Whether Caps Lock and Num Lock are on.
struct CLockKeys
{
    bool caps = false;
    bool num = false;
};

/// The state now where the display can be asked (X11, one round trip), which sees
/// a key pressed in another program's window too. Elsewhere the state that the
/// last key event carried: pass its nativeModifiers(), 0 when there was none.
CLockKeys CurrentLockKeys(std::uint32_t nativeModifiers);
