#include "simbox/ptyline.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
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

using Lock = std::unique_lock<std::mutex>;

QByteArray withoutLineEnd(const QByteArray &line)
{
    int length = line.size();
    while (length > 0 && (line.at(length - 1) == '\r' || line.at(length - 1) == '\n'))
        --length;
    return line.left(length);
}

bool isCommand(const PtyLine::Traffic &piece)
{
    return piece.fromProgram && !withoutLineEnd(piece.bytes).isEmpty();
}

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
    : m_linkPath(std::move(linkPath)), m_clock(clock), m_box(model)
{
    m_time.start();
}

PtyLine::~PtyLine()
{
    hangUp();
}

// Up and down

bool PtyLine::start()
{
    {
        const Lock lock(m_mutex);
        if (m_up && !m_quit)
            return true;
    }
    joinThread();

    const Lock lock(m_mutex);
    m_errorText.clear();
    if (!openTerminal() || !placeLink()) {
        closeTerminal();
        return false;
    }
    m_quit = false;
    m_up = true;
    m_thread = std::thread(&PtyLine::serve, this);
    return true;
}

void PtyLine::hangUp()
{
    {
        const Lock lock(m_mutex);
        m_quit = true;
        if (m_up)
            eventfd_write(m_wake, 1);
    }
    joinThread();
}

bool PtyLine::isUp() const
{
    const Lock lock(m_mutex);
    return m_up;
}

bool PtyLine::waitUntilDown(int timeoutMs) const
{
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return !m_up; });
}

QString PtyLine::slavePath() const
{
    const Lock lock(m_mutex);
    return m_slavePath;
}

QString PtyLine::errorText() const
{
    const Lock lock(m_mutex);
    return m_errorText;
}

bool PtyLine::openTerminal()
{
    char path[PathSize] = {};
    m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (m_wake < 0 || m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0
        || ptsname_r(m_master, path, sizeof path) != 0) {
        m_errorText = QStringLiteral("No pseudo-terminal: ") + qt_error_string(errno);
        return false;
    }
    m_slave = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_slave < 0) {
        m_errorText = QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(path), qt_error_string(errno));
        return false;
    }
    makeRaw(m_slave);
    m_watch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    inotify_add_watch(m_watch, path, IN_OPEN | IN_CLOSE);
    m_slavePath = QString::fromLocal8Bit(path);
    return true;
}

bool PtyLine::placeLink()
{
    const QFileInfo present(m_linkPath);
    if (present.isSymLink()) {
        QFile::remove(m_linkPath);
    } else if (present.exists()) {
        m_errorText =
            QStringLiteral("%1 exists and is no symbolic link. Choose another name.").arg(m_linkPath);
        return false;
    }
    QFile terminal(m_slavePath);
    if (!terminal.link(m_linkPath)) {
        m_errorText = QStringLiteral("Cannot make the link %1: %2").arg(m_linkPath, terminal.errorString());
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
    closeDescriptor(m_slave);
    closeDescriptor(m_master);
    closeDescriptor(m_wake);
    closeDescriptor(m_watch);
    m_slavePath.clear();
    m_up = false;
    m_held.clear();
    m_partialLine.clear();
    m_outgoing.clear();
    m_changed.notify_all();
}

void PtyLine::joinThread()
{
    if (m_thread.joinable())
        m_thread.join();
}

// Box, faults and record

void PtyLine::withBox(const std::function<void(SimulatedBox &)> &function)
{
    const Lock lock(m_mutex);
    catchUp();
    function(m_box);
}

void PtyLine::advance(int milliseconds)
{
    withBox([milliseconds](SimulatedBox &box) { box.advance(milliseconds); });
}

void PtyLine::setFault(const LineFault &fault, int replies)
{
    const Lock lock(m_mutex);
    m_fault = fault;
    m_faultCount = replies;
}

QList<QByteArray> PtyLine::received() const
{
    const Lock lock(m_mutex);
    QList<QByteArray> lines;
    for (const Traffic &piece : m_traffic) {
        if (isCommand(piece))
            lines.append(piece.bytes);
    }
    return lines;
}

QList<QByteArray> PtyLine::commands() const
{
    QList<QByteArray> lines = received();
    for (QByteArray &line : lines)
        line = withoutLineEnd(line);
    return lines;
}

QByteArray PtyLine::receivedBytes() const
{
    const Lock lock(m_mutex);
    return m_receivedBytes;
}

QVector<PtyLine::Traffic> PtyLine::traffic() const
{
    const Lock lock(m_mutex);
    return m_traffic;
}

void PtyLine::clearReceived()
{
    const Lock lock(m_mutex);
    m_traffic.clear();
    m_receivedBytes.clear();
    m_commandCount = 0;
}

bool PtyLine::waitForReceived(int count, int timeoutMs) const
{
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                              [this, count] { return m_commandCount >= count; });
}

void PtyLine::record(bool fromProgram, const QByteArray &bytes)
{
    const Traffic piece{m_time.elapsed(), fromProgram, bytes};
    m_traffic.append(piece);
    if (m_listener)
        m_untold.append(piece);
    if (isCommand(piece)) {
        ++m_commandCount;
        m_changed.notify_all();
    }
}

void PtyLine::tellListener()
{
    QVector<Traffic> news;
    {
        const Lock lock(m_mutex);
        news.swap(m_untold);
    }
    for (const Traffic &piece : qAsConst(news))
        m_listener(piece);
}

// The rotors need no timer: nobody sees them but through a command or withBox(), and both come by here first.
void PtyLine::catchUp()
{
    const qint64 now = m_time.elapsed();
    if (m_clock == Clock::Real)
        m_box.advance(int(now - m_boxTime));
    m_boxTime = now;
}

// The line's thread

void PtyLine::serve()
{
    Lock lock(m_mutex);
    while (!m_quit) {
        const int timeout = pollTimeout();
        const bool wantsToWrite = !m_outgoing.empty() && timeout == WaitForEvents;
        pollfd descriptors[] = {{m_master, short(wantsToWrite ? POLLIN | POLLOUT : POLLIN), 0},
                                {m_wake, POLLIN, 0},
                                {m_watch, POLLIN, 0}};
        lock.unlock();
        poll(descriptors, std::size(descriptors), timeout);
        lock.lock();
        if (m_quit)
            break;
        noticeClosing();
        readCommands();
        writeReplies();
        lock.unlock();
        tellListener();
        lock.lock();
    }
    closeTerminal();
}

int PtyLine::pollTimeout() const
{
    if (m_outgoing.empty())
        return WaitForEvents;
    const qint64 pause = m_outgoing.front().due - m_time.elapsed();
    return pause > 0 ? int(pause) : WaitForEvents;
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
    while ((count = read(m_master, buffer, sizeof buffer)) > 0) {
        m_receivedBytes.append(buffer, int(count));
        m_partialLine.append(buffer, int(count));
        int end = 0;
        while ((end = m_partialLine.indexOf('\n') + 1) > 0) {
            const QByteArray line = m_partialLine.left(end);
            m_partialLine.remove(0, end);
            handleLine(line);
        }
    }
}

void PtyLine::handleLine(const QByteArray &line)
{
    record(true, line);
    if (withoutLineEnd(line).isEmpty())
        return;
    catchUp();
    answer(line, m_box.handle(line));
}

void PtyLine::answer(const QByteArray &line, const QByteArray &reply)
{
    if (m_faultCount == 0 || !m_fault.actsOn(reply)) {
        if (reply.isEmpty())
            return;
        send({{0, m_held + reply, false}});
        m_held.clear();
        return;
    }
    if (m_faultCount > 0)
        --m_faultCount;
    if (m_fault.isLate()) {
        m_held += reply;
        return;
    }
    // Asked of a copy: the box has not heard that query, so it must not use up a prepared angle.
    const QByteArray other = SimulatedBox(m_box).handle(withoutLineEnd(line) == "C" ? "K0" : "C");
    send(m_fault.portions(line, reply, other));
}

void PtyLine::send(const QVector<LineFault::Portion> &portions)
{
    for (const LineFault::Portion &portion : portions) {
        const qint64 earliest = m_outgoing.empty() ? m_time.elapsed() : m_outgoing.back().due;
        m_outgoing.push_back(
            {qMax(earliest, m_time.elapsed()) + portion.pauseMs, portion.bytes, 0, portion.hangUpAfter});
    }
}

void PtyLine::writeReplies()
{
    while (!m_quit && !m_outgoing.empty() && m_outgoing.front().due <= m_time.elapsed()) {
        Outgoing &front = m_outgoing.front();
        while (front.written < front.bytes.size()) {
            const ssize_t count = write(m_master, front.bytes.constData() + front.written,
                                        size_t(front.bytes.size() - front.written));
            if (count <= 0)
                return; // the program does not read; poll() tells when there is room again
            front.written += int(count);
        }
        if (!front.bytes.isEmpty())
            record(false, front.bytes);
        if (front.hangUpAfter)
            m_quit = true;
        m_outgoing.pop_front();
    }
}
