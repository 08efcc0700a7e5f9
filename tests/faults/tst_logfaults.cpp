// SPDX-License-Identifier: MIT
#include "app/echo.h"
#include "app/log.h"
#include "support/faultydisk.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>

#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace {

/// While it lives, the standard output is another one, or none (-1).
class Output
{
public:
    explicit Output(int descriptor)
    {
        std::fflush(stdout);
        if (descriptor < 0)
            close(STDOUT_FILENO);
        else
            dup2(descriptor, STDOUT_FILENO);
    }
    ~Output()
    {
        dup2(m_former, STDOUT_FILENO);
        close(m_former);
    }

private:
    Q_DISABLE_COPY(Output)

    const int m_former = dup(STDOUT_FILENO);
};

/// What can be read until nothing more comes, with the line ends of a pipe or of a terminal.
QStringList linesFrom(int descriptor)
{
    QByteArray text;
    pollfd waiting = {descriptor, POLLIN, 0};
    for (char piece[4096]; poll(&waiting, 1, 300) > 0;)
        text.append(piece, int(read(descriptor, piece, sizeof piece)));
    close(descriptor);
    return QString::fromUtf8(text).remove('\r').split('\n', Qt::SkipEmptyParts);
}

} // namespace

class TestLogFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { obeyPermissions(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aRecordThatDoesNotFitLeavesNoPart()
    {
        CLog log("log", prefix());
        log.write("first");
        const qint64 recordSize = QFileInfo(file(0)).size();
        QStringList expected{"first"};
        // The disk is full after each byte of a record in turn; its time may be a few bytes shorter.
        for (qint64 room = 0; room < recordSize - 3; ++room) {
            {
                const FullDisk disk(QFileInfo(file(0)).size() + room);
                log.write("lost");
                log.write("lost too");
            }
            log.write(QByteArray::number(room).constData());
            expected << QString::number(room);
            QCOMPARE(lines(), expected);
        }
    }

    void theProgramRunsOnWithoutItsFile()
    {
        for (const QString trouble :
             {"a folder in its place", "no permission", "never any room", "the next one is a folder"}) {
            init();
            QFile first(file(0));
            if (trouble == "a folder in its place")
                QVERIFY(QDir().mkpath(file(0)));
            else if (trouble == "never any room")
                QVERIFY(QFile::link("/dev/full", file(0)));
            else if (trouble == "no permission")
                QVERIFY(first.open(QIODevice::WriteOnly) && first.setPermissions(QFile::ReadOwner));
            else
                QVERIFY(QDir().mkpath(file(1)) && first.open(QIODevice::WriteOnly) && first.resize(39999999));
            const qint64 size = QFileInfo(file(0)).size();
            CLog log("log", prefix());
            log.write("lost");
            log.write("lost too");
            QVERIFY2(QFileInfo(file(0)).size() == size, qPrintable(trouble));

            // The next run has its file again.
            QVERIFY(first.remove() || QDir().rmdir(file(0)));
            CLog("log", prefix()).write("here");
            QCOMPARE(trouble + ": " + lines().join('\n'), trouble + ": here");
        }
    }

    void noRuleOfTheSystemSwitchesTheLogOff()
    {
        QLoggingCategory::setFilterRules("*=false");
        {
            CLog log("log", prefix());
            log.install();
            qDebug("before");
            QLoggingCategory::setFilterRules("default.debug=false");
            qDebug("after");
        }
        QLoggingCategory::setFilterRules("");
        QCOMPARE(lines(), QStringList({"before", "after"}));
    }

    void theReaderOfTheEchoHarmsNobody()
    {
        const QString text(99, 'x');
        for (const QString reader :
             {"asleep at a pipe", "asleep at a terminal", "has gone", "no standard output"}) {
            init();
            const bool isThere = reader.startsWith("asleep");
            const bool isTerminal = reader.endsWith("terminal");
            int ends[2] = {}; // to read from, to write to
            QCOMPARE(isTerminal ? openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) : pipe(ends), 0);
            if (!isThere)
                close(ends[0]);
            QStringList echoed;
            {
                const Output output(reader == "no standard output" ? -1 : ends[1]);
                {
                    CLog log("log", prefix());
                    log.install();
                    for (int i = 0; i < 5000; ++i)
                        qDebug("%s", qPrintable(text));
                }
                if (isThere) // and wakes up
                    echoed = linesFrom(ends[0]);
            }
            QVERIFY2(lines().count(text) == 5000 && lines().size() == 5000, qPrintable(reader));
            QVERIFY2(!isThere || echoed.count(text) >= Echo::capacity / 100, qPrintable(reader));
            QVERIFY2(echoed.count(text) == echoed.size(), qPrintable(reader + ": " + echoed.join('\n')));
            close(ends[1]);
        }
    }

private:
    QString prefix() const { return m_folder->path() + '/'; }
    QString file(int index) const { return prefix() + QString("log%1.txt").arg(index); }
    /// What the lines of the first file say; a part of a record shows as it is.
    QStringList lines() const
    {
        QFile log(file(0));
        QString text = log.open(QIODevice::ReadOnly) ? log.readAll() : "missing";
        text.remove(QRegularExpression("\\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d:\\d\\d - \\d+ -\\d+ - "));
        return text.split('\n', Qt::SkipEmptyParts);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestLogFaults)
#include "tst_logfaults.moc"
