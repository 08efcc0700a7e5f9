// SPDX-License-Identifier: MIT
#include "simbox/ptyline.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int ReadSize = 4096;
constexpr int PathSize = 64;
constexpr int WaitForEvents = -1;

void makeRaw(int descriptor)
{
    termios settings = {};
    if (tcgetattr(descriptor, &settings) == 0) {
        cfmakeraw(&settings);
        tcsetattr(descriptor, TCSANOW, &settings);
    }
}

void closeDescriptor(int &descriptor)
{
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

} // namespace

PtyLine::PtyLine(QString linkPath, SimulatedBox::Model model, Clock clock)
    : BoxLine(model, clock), m_linkPath(std::move(linkPath)), m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{}

PtyLine::~PtyLine()
{
    PtyLine::hangUp();
    close(m_wake);
}

// Up and down

bool PtyLine::start()
{
    if (isUp() && !m_quit)
        return true;
    joinThread();
    if (!openTerminal() || !placeLink()) {
        closeTerminal();
        return false;
    }
    m_quit = false;
    setUp(m_slavePath);
    m_thread = std::thread(&PtyLine::serve, this);
    return true;
}

void PtyLine::hangUp()
{
    m_quit = true;
    eventfd_write(m_wake, 1);
    joinThread();
}

bool PtyLine::openTerminal()
{
    char path[PathSize] = {};
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (m_wake < 0 || m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0
        || ptsname_r(m_master, path, sizeof path) != 0) {
        setErrorText(QStringLiteral("No pseudo-terminal: ") + qt_error_string(errno));
        return false;
    }
    m_slave = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_slave < 0) {
        setErrorText(QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(path), qt_error_string(errno)));
        return false;
    }
    makeRaw(m_slave);
    m_watch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    inotify_add_watch(m_watch, path, IN_OPEN | IN_CLOSE);
    m_slavePath = QString::fromLocal8Bit(path);
    eventfd_t wokenBefore = 0;
    eventfd_read(m_wake, &wokenBefore);
    return true;
}

bool PtyLine::placeLink()
{
    const QFileInfo present(m_linkPath);
    if (present.isSymLink()) {
        QFile::remove(m_linkPath);
    } else if (present.exists()) {
        setErrorText(
            QStringLiteral("%1 exists and is no symbolic link. Choose another name.").arg(m_linkPath));
        return false;
    }
    QFile terminal(m_slavePath);
    if (!terminal.link(m_linkPath)) {
        setErrorText(QStringLiteral("Cannot make the link %1: %2").arg(m_linkPath, terminal.errorString()));
        return false;
    }
    return true;
}

void PtyLine::removeLink()
{
    // Another line may have taken the name meanwhile.
    const QFileInfo link(m_linkPath);
    if (!m_slavePath.isEmpty() && link.isSymLink() && link.symLinkTarget() == m_slavePath)
        QFile::remove(m_linkPath);
}

void PtyLine::closeTerminal()
{
    removeLink();
    setDown(); // before the program can notice
    closeDescriptor(m_slave);
    closeDescriptor(m_master);
    closeDescriptor(m_watch);
    m_slavePath.clear();
}

void PtyLine::joinThread()
{
    if (m_thread.joinable())
        m_thread.join();
}

// The line's thread

void PtyLine::serve()
{
    while (!m_quit) {
        const int pause = untilDue();
        const bool wantsToWrite = pause == 0;
        pollfd descriptors[] = {{m_master, short(wantsToWrite ? POLLIN | POLLOUT : POLLIN), 0},
                                {m_wake, POLLIN, 0},
                                {m_watch, POLLIN, 0}};
        poll(descriptors, std::size(descriptors), pause > 0 ? pause : WaitForEvents);
        if (m_quit)
            break;
        noticeClosing();
        readCommands();
        if (!sendDue())
            m_quit = true;
    }
    closeTerminal();
}

// A program that is killed leaves the terminal marked as exclusive, and our own descriptor keeps the mark
// alive.
void PtyLine::noticeClosing()
{
    alignas(inotify_event) char buffer[ReadSize];
    const ssize_t count = m_watch < 0 ? 0 : read(m_watch, buffer, sizeof buffer);
    if (count < ssize_t(sizeof(inotify_event)))
        return;
    // Without names all events have one size, so the last one tells whether somebody has it open again.
    const auto *last = reinterpret_cast<const inotify_event *>(buffer + count - sizeof(inotify_event));
    if (last->mask & IN_CLOSE)
        ioctl(m_slave, TIOCNXCL);
}

void PtyLine::readCommands()
{
    char buffer[ReadSize];
    ssize_t count = 0;
    while ((count = read(m_master, buffer, sizeof buffer)) > 0)
        receive(QByteArray(buffer, int(count)));
}

qint64 PtyLine::deliver(const char *bytes, qint64 size)
{
    return write(m_master, bytes, size_t(size));
}
