// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QWidget>

/// Answers a request to close a window that an open dialog blocks: the dialog comes to the front. Qt drops
/// such a request without an event, so it is read from what the window system sends: on X11 a client message
/// that carries nothing but a time. Other systems say themselves that the window is blocked.
class CloseRequests : public QAbstractNativeEventFilter
{
public:
    /// `window` is not owned.
    explicit CloseRequests(QWidget *window);
    ~CloseRequests() override;
    Q_DISABLE_COPY_MOVE(CloseRequests)

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    using Result = long;
#else
    using Result = qintptr;
#endif
    /// Whether a dialog of the window is open; it is in front then.
    bool bringDialogToFront() const;

    bool nativeEventFilter(const QByteArray &eventType, void *message, Result *result) override;

    /// The client message of the X protocol, in the layout of its 32 bytes.
    struct ClientMessage
    {
        quint8 kind;
        quint8 bitsPerItem;
        quint16 sequence;
        quint32 window;
        quint32 type;
        quint32 protocol;
        quint32 time;
        quint32 rest[3];
    };

private:
    QPointer<QWidget> m_window;
};
