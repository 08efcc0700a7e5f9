#include "mainwindow/closerequests.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace {

constexpr int clientMessageKind = 33;
constexpr int kindMask = 0x7f; // the highest bit says that another client sent it

/// The other protocols between window system and window send more than a time: which window, or a counter.
bool carriesOnlyATime(const CloseRequests::ClientMessage &message)
{
    return std::all_of(std::begin(message.rest), std::end(message.rest),
                       [](quint32 item) { return item == 0; });
}

} // namespace

CloseRequests::CloseRequests(const QWidget *window, std::function<void()> noticed)
    : m_window(window), m_noticed(std::move(noticed))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

CloseRequests::~CloseRequests()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool CloseRequests::nativeEventFilter(const QByteArray &eventType, void *message, Result *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto &event = *static_cast<const ClientMessage *>(message);
    if ((event.kind & kindMask) == clientMessageKind && event.bitsPerItem == 32
        && event.window == m_window->internalWinId() && carriesOnlyATime(event))
        m_noticed();
    return false;
}
