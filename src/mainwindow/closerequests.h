#pragma once

#include <QAbstractNativeEventFilter>
#include <QWidget>

#include <functional>

/// Notices that the operator wants to close a window that an open dialog blocks. Qt drops such a request
/// without an event, so it is read from what the window system sends: on X11 a client message that carries
/// nothing but a time. Other systems say themselves that the window is blocked.
class CloseRequests : public QAbstractNativeEventFilter
{
public:
    /// Calls `noticed` at each request to close `window`, which is not owned.
    CloseRequests(const QWidget *window, std::function<void()> noticed);
    ~CloseRequests() override;
    Q_DISABLE_COPY_MOVE(CloseRequests)

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    using Result = long;
#else
    using Result = qintptr;
#endif
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
    const QWidget *m_window;
    std::function<void()> m_noticed;
};
