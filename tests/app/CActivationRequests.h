#pragma once

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QList>

#include <cstdlib>
#include <xcb/xcb.h>

/// What programs ask the X window manager for, as it hears it: windows to be activated. Needs an application object on
/// an X display; sees requests from its construction on, whenever the event loop runs.
class CActivationRequests : public QAbstractNativeEventFilter
{
  public:
    struct Request
    {
        quint32 source = 0; ///< 1 an application's wish, 2 the user's
        quint32 time = 0;   ///< the X server's, in milliseconds; 0 for now
        bool operator==(const Request&) const = default;
    };

    CActivationRequests()
    {
        xcb_connection_t* connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        const quint32 events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &events);
        constexpr char k_name[] = "_NET_ACTIVE_WINDOW";
        xcb_intern_atom_reply_t* atom =
            xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, sizeof(k_name) - 1, k_name), nullptr);
        m_type = atom->atom;
        std::free(atom); // NOLINT(cppcoreguidelines-no-malloc): the X library made it with malloc()
        qGuiApp->installNativeEventFilter(this);
    }

    [[nodiscard]] const QList<Request>& requests() const
    {
        return m_requests;
    }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override
    {
        const auto* event = static_cast<const xcb_client_message_event_t*>(message);
        constexpr int k_sentByAClient = 0x80;
        if ((event->response_type & ~k_sentByAClient) == XCB_CLIENT_MESSAGE && event->type == m_type)
            m_requests.append({event->data.data32[0], event->data.data32[1]});
        return false;
    }

  private:
    xcb_atom_t m_type = XCB_ATOM_NONE;
    QList<Request> m_requests;
};
