#include "app/XWindowActivation.h"

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
constexpr quint32 k_fromTheUser = 2; // instead of 1, an application's own wish

struct Free
{
    void operator()(void* memory) const
    {
        std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): the X library made it with malloc()
    }
};
template <class T> using Reply = std::unique_ptr<T, Free>;
} // namespace

void XWindowActivation::ask(const QWindow& window, quint32 time)
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    xcb_connection_t* connection = x11->connection();
    const auto id = xcb_window_t(window.winId());

    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, sizeof(k_activeWindow) - 1, k_activeWindow), nullptr));
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection, xcb_query_tree(connection, id), nullptr));
    if (!atom || !tree)
        return;

    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id;
    event.type = atom->atom;
    event.data.data32[0] = k_fromTheUser;
    event.data.data32[1] = time;
    std::array<char, 32> message{};
    static_assert(sizeof(event) <= message.size());
    std::memcpy(message.data(), &event, sizeof(event));
    xcb_send_event(connection, 0, tree->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   message.data());
    xcb_flush(connection);
}
