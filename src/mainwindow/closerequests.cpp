// SPDX-License-Identifier: MIT
#include "mainwindow/closerequests.h"

#include <QApplication>

#include <algorithm>

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

CloseRequests::CloseRequests(QWidget *window) : m_window(window)
{
    qApp->installNativeEventFilter(this);
}

CloseRequests::~CloseRequests()
{
    qApp->removeNativeEventFilter(this);
}

bool CloseRequests::bringDialogToFront() const
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog || !m_window->findChildren<QWidget *>().contains(dialog))
        return false;
    dialog->raise();
    dialog->activateWindow();
    return true;
}

bool CloseRequests::nativeEventFilter(const QByteArray &eventType, void *message, Result *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto &event = *static_cast<const ClientMessage *>(message);
    if ((event.kind & kindMask) == clientMessageKind && event.bitsPerItem == 32
        && event.window == m_window->internalWinId() && carriesOnlyATime(event))
        bringDialogToFront();
    return false;
}
