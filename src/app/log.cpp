// SPDX-License-Identifier: MIT
#include "app/log.h"

#include "app/echo.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMutexLocker>
#include <QStringBuilder>
#include <QThread>

#include <memory>
#include <utility>
#include <vector>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr int fileCount = 40;
constexpr qint64 largestFileAtStart = 40000000;
constexpr int largestFileWhileWriting = 39999999;

QString fixedPathPrefix()
{
#ifdef Q_OS_WIN
    return QStringLiteral("c:\\");
#else
    return QDir::homePath() + QStringLiteral("/.local/state/VextralRemoteControl/");
#endif
}

/// A file that is opened while the standard output is closed would become the standard output.
void occupyStandardStreams()
{
#ifdef Q_OS_UNIX
    int descriptor = -1;
    do
        descriptor = ::open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
#endif
}

/// As QTime's format "zzzz", which takes as long as the rest of a record: with leading zeros, and once more
/// without trailing ones.
QByteArray millisecondsText(int milliseconds)
{
    const QByteArray padded = QByteArray::number(1000 + milliseconds).mid(1);
    int kept = int(padded.size());
    while (kept > 1 && padded[kept - 1] == '0')
        --kept;
    return padded + padded.left(kept);
}

QLoggingCategory::CategoryFilter systemFilter = nullptr;

/// The system's rules hold for all categories but the one that the program logs in.
void filterCategory(QLoggingCategory *category)
{
    // Installing the filter calls it for the existing categories, which have followed the rules already.
    if (systemFilter)
        systemFilter(category);
    if (qstrcmp(category->categoryName(), "default") != 0)
        return;
    for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
        category->setEnabled(type, true);
}

CLog *installedLog = nullptr;

/// For an echo whose thread is still writing: it lives as long as the process.
void keepForGood(std::unique_ptr<Echo> echo)
{
    static auto *kept = new std::vector<std::unique_ptr<Echo>>;
    kept->push_back(std::move(echo));
}

} // namespace

CLog::CLog(const QString &baseName) : CLog(baseName, fixedPathPrefix()) {}

CLog::CLog(QString baseName, QString pathPrefix)
    : m_baseName(std::move(baseName)), m_pathPrefix(std::move(pathPrefix))
{
    occupyStandardStreams();
    QDir().mkpath(QFileInfo(m_pathPrefix).path());
    const QString path = chooseFile();
    // When every file is full this removes a file named like the log without its number, nothing else.
    if (path.isEmpty())
        QFile::remove(m_baseName);
    open(path);
}

CLog::~CLog()
{
    if (!m_echo)
        return;
    qInstallMessageHandler(nullptr);
    installedLog = nullptr;
    if (m_echo->finish())
        return;
    keepForGood(std::move(m_echo));
}

void CLog::install()
{
    m_echo = std::make_unique<Echo>();
    m_echo->start();
    installedLog = this;
    // It stays installed: at the end of the process Qt destroys its categories before the log.
    if (!systemFilter)
        systemFilter = QLoggingCategory::installFilter(filterCategory);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &message) {
        installedLog->handle(type, message);
    });
}

void CLog::handle(QtMsgType type, const QString &message)
{
    write(message.toLatin1().constData());
    m_echo->write(message.toUtf8() + '\n');
    // Qt ends the program next.
    if (type == QtFatalMsg)
        m_echo->finish();
}

void CLog::write(const char *message)
{
    const QMutexLocker locker(&m_mutex);
    const auto thread = reinterpret_cast<quintptr>(QThread::currentThread());
    QByteArray line =
        timeStamp() % QByteArray::number(quint64(thread)) % " - " % QString::fromLatin1(message).toUtf8();
    m_fileSize += int(line.size());
    if (m_fileSize > largestFileWhileWriting)
        advanceToNextFile();
    // One write for text and line end, so that a second copy of the program cannot come between them.
    line += '\n';
    m_stream.write(line.constData(), line.size());
    m_stream.flush();
    if (m_stream.is_open() && !m_stream)
        takeBack(line);
}

/// The time as "dd/MM/yyyy hh:mm:ss - zzzz -". A status reply is dozens of records; a second is written out
/// once for all of them.
QByteArray CLog::timeStamp()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now / 1000 != m_second) {
        m_second = now / 1000;
        const QDateTime time = QDateTime::fromSecsSinceEpoch(m_second);
        m_secondText = time.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss - ")).toUtf8();
    }
    return m_secondText % millisecondsText(int(now % 1000)) % " -";
}

void CLog::takeBack(const QByteArray &line)
{
    m_stream.clear();
    QFile file(filePath(m_fileIndex));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || file.isSequential())
        return;
    file.seek(qMax(qint64(0), file.size() - line.size()));
    const QByteArray end = file.readAll();
    int written = line.size();
    while (written > 0 && !end.endsWith(line.left(written)))
        --written;
    file.resize(file.size() - written);
}

QString CLog::filePath(int index) const
{
    return m_pathPrefix + m_baseName + QString::number(index) + QStringLiteral(".txt");
}

/// Returns the path of the first file with room and takes its number and size; empty when all are full.
QString CLog::chooseFile()
{
    for (int i = 0; i < fileCount; ++i) {
        const QFileInfo file(filePath(i));
        const qint64 size = file.exists() ? file.size() : 0;
        if (size <= largestFileAtStart) {
            m_fileIndex = i;
            m_fileSize = int(size);
            return file.filePath();
        }
    }
    return {};
}

void CLog::open(const QString &path)
{
    // Unbuffered, so that nothing of a record that did not fit waits for the next one.
    m_stream.rdbuf()->pubsetbuf(nullptr, 0);
    // Binary, so that a line ends in LF alone on Windows too.
    m_stream.open(QFile::encodeName(path).constData(), std::ios::out | std::ios::app | std::ios::binary);
}

void CLog::advanceToNextFile()
{
    m_fileSize = 0;
    m_fileIndex = (m_fileIndex + 1) % fileCount;
    m_stream.close();
    const QString path = filePath(m_fileIndex);
    QFile::remove(path);
    open(path);
}
