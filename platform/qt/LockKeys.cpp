#include "platform/qt/LockKeys.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

namespace
{

/// The modifiers of the X server; nothing when there is none or it does not answer.
std::optional<std::uint32_t> AskServer()
{
    auto const* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Off screen Qt has the interface, but no connection behind it.
    auto* const connection = x11 == nullptr ? nullptr : x11->connection();
    if (connection == nullptr || xcb_connection_has_error(connection) != 0) {
        return std::nullopt;
    }
    auto const root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    auto const request = xcb_query_pointer(connection, root);
    std::unique_ptr<xcb_query_pointer_reply_t, decltype(&std::free)> const reply(
        xcb_query_pointer_reply(connection, request, nullptr), &std::free);
    return reply ? std::optional<std::uint32_t>(reply->mask) : std::nullopt;
}

} // namespace

CLockKeys CurrentLockKeys(std::uint32_t nativeModifiers)
{
    // Wayland's keymaps give both keys the same bits as X11's.
    auto const modifiers = AskServer().value_or(nativeModifiers);
    return {(modifiers & XCB_MOD_MASK_LOCK) != 0, (modifiers & XCB_MOD_MASK_2) != 0};
}
