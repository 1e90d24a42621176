#pragma once

#include <QString>
#include <QVariantMap>

class QWidget;

/// What a desktop gives to whom it starts or calls, as proof that the user asked for it: window systems let a window
/// come in front of the one that the user works in only with such a proof.
///
/// Threads  the environment's functions and bringToFront(): the GUI thread. A token itself: any.
struct ActivationToken
{
    QString activation; ///< Wayland's; empty for none
    QString startupId;  ///< X11's, which ends with "_TIME" and the X server's time; empty for none

    /// Of this process. Called before the application object is made, which takes one of the two for itself.
    [[nodiscard]] static ActivationToken fromEnvironment();

    /// A token serves once, so that programs started from here must not find it.
    static void clearEnvironment();

    /// As org.freedesktop.Application passes it on.
    [[nodiscard]] static ActivationToken fromPlatformData(const QVariantMap& data);
    [[nodiscard]] QVariantMap toPlatformData() const;

    [[nodiscard]] bool isEmpty() const;

    /// Restores the window if it is minimised, and gives it, or the box that it waits for, the focus in front of all.
    void bringToFront(QWidget& window) const;
};
