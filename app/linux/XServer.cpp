#include "app/XServer.h"

#include <QGuiApplication>
#include <QWindow>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace
{
constexpr char k_activeWindow[] = "_NET_ACTIVE_WINDOW";
constexpr char k_clipboard[] = "CLIPBOARD";
constexpr quint32 k_fromTheUser = 2; // instead of 1, an application's own wish

struct Free
{
    void operator()(void* memory) const
    {
        std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): the X library made it with malloc()
    }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

/// Null where there is no X server.
xcb_connection_t* connectionToServer()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

/// The server's number for a name; XCB_ATOM_NONE without an answer.
xcb_atom_t atom(xcb_connection_t* connection, QByteArrayView name)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, quint16(name.size()), name.constData()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}
} // namespace

void XServer::giveFocus(const QWindow& window, quint32 time)
{
    xcb_connection_t* connection = connectionToServer();
    if (connection == nullptr)
        return;
    const auto id = xcb_window_t(window.winId());
    const xcb_atom_t activeWindow = atom(connection, k_activeWindow);
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection, xcb_query_tree(connection, id), nullptr));
    if (activeWindow == XCB_ATOM_NONE || !tree)
        return;

    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id;
    event.type = activeWindow;
    event.data.data32[0] = k_fromTheUser;
    event.data.data32[1] = time;
    std::array<char, 32> message{};
    static_assert(sizeof(event) <= message.size());
    std::memcpy(message.data(), &event, sizeof(event));
    xcb_send_event(connection, 0, tree->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   message.data());
    xcb_flush(connection);
}

bool XServer::isClipboardHeld()
{
    xcb_connection_t* connection = connectionToServer();
    if (connection == nullptr)
        return true;
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, atom(connection, k_clipboard)), nullptr));
    return !reply || reply->owner != XCB_WINDOW_NONE;
}
